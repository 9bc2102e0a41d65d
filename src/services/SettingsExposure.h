#pragma once

#include "services/Settings.h"

namespace settings {

/// The file of these settings and the modules, library directories and programs that they name, as far as everybody may
/// change them: then other users of the machine decide what runs in this one's name.
std::vector<std::wstring> ExposedFiles(const Settings& settings);

} // namespace settings
