#pragma once

#include "services/Settings.h"

#include <string>
#include <vector>

namespace settings {

/// The settings that hold where no file says otherwise.
Settings BuiltInSettings();

/// Reads a settings file; what it does not say is built in. False, with `problem` naming the file, the place in it, the
/// member and what was expected. `warnings` are appended: members that mean nothing, one text each.
[[nodiscard]] bool ReadSettingsFile(const std::wstring& path, Settings& read, std::wstring& problem,
                                    std::vector<std::wstring>& warnings);

} // namespace settings
