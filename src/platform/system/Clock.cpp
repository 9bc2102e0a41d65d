#include "platform/system/Clock.h"

#include <algorithm>
#include <chrono>

namespace platform {
namespace {

// Range of the Windows runtime: 1970-01-01T00:00:00Z to 3000-12-31T23:59:59Z.
constexpr std::int64_t lastTime = 32'535'215'999;
constexpr std::int64_t firstYear = 1970;
constexpr std::int64_t lastYear = 3000;
constexpr std::int64_t cannotBeTold = -1;

bool IsKnown(std::int64_t time) {
    return time >= 0 && time <= lastTime;
}

bool IsKnownYear(std::int64_t year) {
    return year >= firstYear && year <= lastYear;
}

CalendarTime FieldsOf(const std::tm& parts) {
    return {parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday, parts.tm_hour, parts.tm_min, parts.tm_sec};
}

void AppendPadded(std::int32_t number, std::size_t width, std::wstring& text) {
    const std::wstring digits = std::to_wstring(number);
    text.append(width - std::min(width, digits.size()), L'0');
    text += digits;
}

struct Separators {
    const wchar_t* date;
    const wchar_t* between;
    const wchar_t* time;
};

std::wstring Stamp(const CalendarTime& fields, const Separators& separators) {
    std::wstring text;
    AppendPadded(fields.year, 4, text);
    AppendPadded(fields.month, 2, text += separators.date);
    AppendPadded(fields.day, 2, text += separators.date);
    AppendPadded(fields.hour, 2, text += separators.between);
    AppendPadded(fields.minute, 2, text += separators.time);
    AppendPadded(fields.second, 2, text += separators.time);
    return text;
}

} // namespace

std::int64_t Now() {
    const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::seconds>(sinceEpoch).count();
}

CalendarTime ToUtc(std::int64_t time) {
    return IsKnown(time) ? FieldsOf(UtcParts(time)) : CalendarTime{};
}

CalendarTime ToLocal(std::int64_t time) {
    return IsKnown(time) ? FieldsOf(LocalParts(time)) : CalendarTime{};
}

std::int64_t FromLocal(const CalendarTime& fields) {
    const std::int64_t months = std::int64_t{fields.year} * 12 + fields.month - 1;
    if (!IsKnownYear(fields.year) || months < 0 || !IsKnownYear(months / 12)) {
        return cannotBeTold;
    }
    std::tm parts = {};
    parts.tm_year = static_cast<int>(months / 12 - 1900);
    parts.tm_mon = static_cast<int>(months % 12);
    parts.tm_mday = fields.day;
    parts.tm_hour = fields.hour;
    parts.tm_min = fields.minute;
    parts.tm_sec = fields.second;
    const std::int64_t time = TimeOfLocalParts(parts);
    return IsKnown(time) ? time : cannotBeTold;
}

std::wstring LocalStamp(std::int64_t time) {
    return Stamp(ToLocal(time), {L"", L"_", L""});
}

std::wstring UtcStamp(std::int64_t time) {
    return Stamp(ToUtc(time), {L"", L"T", L""}) + L'Z';
}

std::wstring UtcTimestamp(std::int64_t time) {
    return Stamp(ToUtc(time), {L"-", L"T", L":"}) + L'Z';
}

std::wstring UtcText(std::int64_t time) {
    return Stamp(ToUtc(time), {L"-", L" ", L":"}) + L" UTC";
}

} // namespace platform
