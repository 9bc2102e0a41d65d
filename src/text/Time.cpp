#include "text/Time.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <utility>

namespace text {
namespace {

std::optional<int> Digits(std::wstring_view digits) {
    int number = 0;
    for (const wchar_t digit : digits) {
        if (digit < L'0' || digit > L'9') {
            return std::nullopt;
        }
        number = number * 10 + (digit - L'0');
    }
    return number;
}

/// Units: seconds.
constexpr std::array units = {std::pair{L's', 1}, std::pair{L'm', 60}, std::pair{L'h', 3600}, std::pair{L'd', 86400}};

} // namespace

std::optional<std::int64_t> ReadUtcTime(std::wstring_view text) {
    constexpr std::wstring_view form = L"0000-00-00T00:00:00Z";
    if (text.size() != form.size() || text[4] != L'-' || text[7] != L'-' || text[10] != L'T' || text[13] != L':' ||
        text[16] != L':' || text[19] != L'Z') {
        return std::nullopt;
    }
    const auto year = Digits(text.substr(0, 4));
    const auto month = Digits(text.substr(5, 2));
    const auto day = Digits(text.substr(8, 2));
    const auto hour = Digits(text.substr(11, 2));
    const auto minute = Digits(text.substr(14, 2));
    const auto second = Digits(text.substr(17, 2));
    if (!year || !month || !day || !hour || !minute || !second || *hour > 23 || *minute > 59 || *second > 59) {
        return std::nullopt;
    }
    const std::chrono::year_month_day date(std::chrono::year(*year), std::chrono::month(static_cast<unsigned>(*month)),
                                           std::chrono::day(static_cast<unsigned>(*day)));
    if (!date.ok()) {
        return std::nullopt;
    }
    const std::int64_t days = std::chrono::sys_days(date).time_since_epoch().count();
    return ((days * 24 + *hour) * 60 + *minute) * 60 + *second;
}

std::optional<std::int64_t> ReadDuration(std::wstring_view text) {
    constexpr std::size_t mostDigits = 6;
    if (text.size() < 2 || text.size() > mostDigits + 1) {
        return std::nullopt;
    }
    const auto unit =
        std::find_if(units.begin(), units.end(), [&](const auto& each) { return each.first == text.back(); });
    const auto number = Digits(text.substr(0, text.size() - 1));
    return unit == units.end() || !number ? std::nullopt : std::optional(std::int64_t{*number} * unit->second);
}

} // namespace text
