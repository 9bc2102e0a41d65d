#include "platform/processes/Process.h"

#include <charconv>
#include <string_view>

#include "platform/processes/InheritedHandle.h"

namespace platform {
namespace {

constexpr std::wstring_view prefix = L"0x";
constexpr std::size_t mostDigits = 16;

std::optional<std::uintptr_t> ParseHexadecimal(std::wstring_view text) {
    if (!text.starts_with(prefix) || text.size() > prefix.size() + mostDigits) {
        return std::nullopt;
    }
    // Everything beyond ASCII becomes a character that is no digit.
    std::string digits;
    for (const wchar_t unit : text.substr(prefix.size())) {
        digits += unit > L' ' && unit <= L'~' ? static_cast<char>(unit) : '?';
    }
    std::uintptr_t number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number, 16);
    const bool isWhole = error == std::errc() && end == digits.data() + digits.size();
    return isWhole ? std::optional(number) : std::nullopt;
}

} // namespace

std::wstring InheritedHandleText(void* handle) {
    char digits[mostDigits];
    const auto end = std::to_chars(digits, digits + mostDigits, reinterpret_cast<std::uintptr_t>(handle), 16).ptr;
    return std::wstring(prefix) + std::wstring(digits, end);
}

OwnedHandle TakeInheritedHandle(const std::wstring& text) {
    const std::optional<std::uintptr_t> number = ParseHexadecimal(text);
    void* const handle = reinterpret_cast<void*>(number.value_or(0));
    return handle != nullptr && SetCloseOnExec(handle) ? OwnedHandle(handle) : OwnedHandle();
}

} // namespace platform
