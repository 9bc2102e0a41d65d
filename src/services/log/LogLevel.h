#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace log_file {

/// In ascending order.
enum class Level : std::int32_t { Debug, Info, Warning, Error };

/// The names used in the settings, indexed by level.
inline constexpr std::array<const wchar_t*, 4> levelNames{L"debug", L"info", L"warning", L"error"};

inline const wchar_t* NameOf(Level level) {
    return levelNames.at(static_cast<std::size_t>(level));
}

/// Returns the level of this name; nothing for an unknown name.
inline std::optional<Level> LevelNamed(const std::wstring& name) {
    for (std::size_t index = 0; index < levelNames.size(); ++index) {
        if (name == levelNames[index]) {
            return static_cast<Level>(index);
        }
    }
    return std::nullopt;
}

} // namespace log_file
