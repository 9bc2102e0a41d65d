#pragma once

#include "services/Settings.h"

#include <string>
#include <vector>

namespace settings {

/// Returns the settings in force without a settings file.
Settings BuiltInSettings();

/// Reads a settings file; members that it omits take the built-in value. Appends one text per unknown member to
/// `warnings`. On failure returns false and sets `problem` to file, position, member and what was expected.
[[nodiscard]] bool ReadSettingsFile(const std::wstring& path, Settings& read, std::wstring& problem,
                                    std::vector<std::wstring>& warnings);

} // namespace settings
