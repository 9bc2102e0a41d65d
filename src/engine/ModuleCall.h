#pragma once

#include "CommonControllerLib/FunctionManager.h"

#include <string>

/// Calls a function of the modules and hands its result back. A module that throws must not take the host with it: that
/// is logged and gives -1, as a function that nobody offers does. `activity` completes "The function module threw while
/// it ".
[[nodiscard]] long CallModule(const FunctionManager& modules, const std::string& functionName,
                              const std::wstring& input, std::wstring& output, FunctionManager::Callback callback,
                              const std::string& activity);
