#pragma once

#include "CommonControllerLib/Export.h"

#include <string>
#include <vector>

/// Returns why a module cannot be used, as the end of a sentence about it: "cannot be loaded: REASON OF THE SYSTEM.
/// ...", "has no export "NAME"."; empty if it can be loaded and has these exports. Paths are absolute. Threads: one at
/// a time.
CONTROLLER_API std::wstring ModuleProblem(const std::wstring& modulePath, const std::vector<const char*>& exports);
