#pragma once

#include "CommonControllerLib/Export.h"
#include "CommonControllerLib/FunctionManager.h"

#include <string>

/// Calls a function of the modules and returns its result; -1 if no module provides it. An exception of the module must
/// not end the host: it is logged and yields -1. `activity` completes "The function module threw while it ".
[[nodiscard]] CONTROLLER_API long CallModule(const FunctionManager& modules, const std::string& functionName,
                                             const std::wstring& input, std::wstring& output,
                                             FunctionManager::Callback callback, const std::string& activity);
