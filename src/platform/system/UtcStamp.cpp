#include "platform/system/UtcStamp.h"

#include <algorithm>

#include "platform/system/Clock.h"

namespace {

void AppendPadded(std::int32_t number, std::size_t width, std::wstring& text) {
    const std::wstring digits = std::to_wstring(number);
    text.append(width - std::min(width, digits.size()), L'0');
    text += digits;
}

} // namespace

std::wstring UtcStamp(std::int64_t time) {
    const platform::CalendarTime utc = platform::ToUtc(time);
    std::wstring text;
    AppendPadded(utc.year, 4, text);
    AppendPadded(utc.month, 2, text);
    AppendPadded(utc.day, 2, text);
    text += L'T';
    AppendPadded(utc.hour, 2, text);
    AppendPadded(utc.minute, 2, text);
    AppendPadded(utc.second, 2, text);
    text += L'Z';
    return text;
}

std::wstring UtcText(std::int64_t time) {
    std::wstring text = UtcStamp(time);
    text.replace(text.size() - 1, 1, L" UTC");
    text.insert(13, L":").insert(11, L":");
    text.replace(8, 1, L" ");
    return text.insert(6, L"-").insert(4, L"-");
}
