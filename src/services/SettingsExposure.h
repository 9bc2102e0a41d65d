#pragma once

#include "services/Settings.h"

namespace settings {

/// Returns those files that every user may change: the settings file and the modules, library directories and programs
/// that it names. Other users could use them to run code as this user.
std::vector<std::wstring> ExposedFiles(const Settings& settings);

} // namespace settings
