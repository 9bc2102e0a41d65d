#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

/// Times in texts. Pure functions; threads: any. Units: seconds, since 1970-01-01T00:00:00Z for points in time.
namespace text {

/// Parses a time such as "2024-03-05T07:08:09Z". Returns nothing for any other text.
std::optional<std::int64_t> ReadUtcTime(std::wstring_view text);

/// Parses a whole number of seconds, minutes, hours or days: "90s", "15m", "2h", "1d". The number has at most six
/// digits. Returns nothing for any other text.
std::optional<std::int64_t> ReadDuration(std::wstring_view text);

} // namespace text
