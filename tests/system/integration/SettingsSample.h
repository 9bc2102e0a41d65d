#pragma once

#include "kit/TemporaryDirectory.h"

#include <string>

/// The settings file in docs/settings.md.
inline std::string SettingsSample() {
    const std::string page = ReadTextFile(SETTINGS_PAGE);
    const std::size_t begin = page.find("```json\n") + 8;
    return page.substr(begin, page.find("```\n", begin) - begin);
}
