#pragma once

#include "CommonControllerLib/Export.h"

#include <string>
#include <vector>

/// Why a module cannot be used, as the end of a sentence about it: "cannot be loaded: WORDS OF THE SYSTEM. ...", "has
/// no export "NAME"."; empty when it can be loaded and has these exports. Paths are absolute. One thread at a time.
CONTROLLER_API std::wstring ModuleProblem(const std::wstring& modulePath, const std::vector<const char*>& exports);
