#pragma once

#include <cstdint>
#include <ctime>
#include <string>

/// Calendar time. Units: seconds since 1970-01-01T00:00:00Z as `std::int64_t`, the `__time64_t` of Windows, on both
/// systems.
namespace platform {

struct CalendarTime {
    std::int32_t year = 0;  ///< the full year, 2024
    std::int32_t month = 0; ///< 1 to 12
    std::int32_t day = 0;   ///< 1 to 31
    std::int32_t hour = 0;
    std::int32_t minute = 0;
    std::int32_t second = 0;
};

std::int64_t Now();

/// UTC fields of a time; all zero for a time that the Windows runtime rejects (before 1970, after the year 3000).
CalendarTime ToUtc(std::int64_t time);

/// Local fields of a time (TZ), otherwise same as `ToUtc`.
CalendarTime ToLocal(std::int64_t time);

/// The time with these local fields, as `_mktime64` computes it with daylight saving off (fields out of range carry
/// over). Returns -1 for years before 1970 or after 3000, for a time before 1970 in UTC, and on failure.
std::int64_t FromLocal(const CalendarTime& fields);

/// The local time in the form "%Y%m%d_%H%M%S", at most 31 characters.
std::wstring LocalStamp(std::int64_t time);

/// A UTC time for file names: "20240305T070809Z".
std::wstring UtcStamp(std::int64_t time);

/// A UTC time for files and messages: "2024-03-05T07:08:09Z".
std::wstring UtcTimestamp(std::int64_t time);

/// A UTC time for people: "2024-03-05 07:08:09 UTC".
std::wstring UtcText(std::int64_t time);

// The conversions of the C runtime behind the functions above, for times that both runtimes support.

std::tm UtcParts(std::int64_t time);
std::tm LocalParts(std::int64_t time);

/// Converts local fields with daylight saving off; -1 on failure.
std::int64_t TimeOfLocalParts(std::tm parts);

} // namespace platform
