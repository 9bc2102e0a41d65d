#include "text/Numbers.h"

#include <algorithm>
#include <limits>

namespace {

constexpr std::int64_t lowest = std::numeric_limits<std::int32_t>::min();
constexpr std::int64_t highest = std::numeric_limits<std::int32_t>::max();

bool IsDigit(wchar_t character) {
    return character >= L'0' && character <= L'9';
}

/// Returns the value of the leading digits; a number too large is limited to a value just above the 32-bit range.
std::int64_t ReadDigits(std::wstring_view text) {
    std::int64_t value = 0;
    for (const wchar_t character : text) {
        if (!IsDigit(character)) {
            break;
        }
        value = std::min(value * 10 + (character - L'0'), highest + 2);
    }
    return value;
}

} // namespace

std::int32_t numbers::ReadInteger(std::wstring_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(L" \t\n\v\f\r"), text.size()));
    const bool hasSign = !text.empty() && (text.front() == L'-' || text.front() == L'+');
    const bool isNegative = hasSign && text.front() == L'-';
    text.remove_prefix(hasSign ? 1 : 0);
    const std::int64_t value = ReadDigits(text);
    return static_cast<std::int32_t>(std::clamp(isNegative ? -value : value, lowest, highest));
}

std::wstring numbers::DecimalText(std::int32_t number) {
    // std::to_wstring uses a format string; std::to_string does not and is several times as fast.
    const std::string digits = std::to_string(number);
    return {digits.begin(), digits.end()};
}
