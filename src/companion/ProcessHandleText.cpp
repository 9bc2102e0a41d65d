#include "companion/ProcessHandleText.h"

#include <array>
#include <bit>
#include <charconv>
#include <cstdint>
#include <string_view>

#include "companion/json/Encoding.h"

namespace process_handle_text {

std::wstring Format(const void* process) {
    std::array<char, 16> digits;
    const auto number = std::bit_cast<std::uintptr_t>(process);
    const auto end = std::to_chars(digits.begin(), digits.end(), number, 16).ptr;
    return L"0x" + std::wstring(digits.begin(), end);
}

bool Parse(const std::wstring& text, void*& process) {
    std::string digits;
    std::size_t badAt = 0;
    if (!json::EncodeUtf8(text, digits, badAt)) {
        return false;
    }
    std::string_view rest = digits;
    if (rest.starts_with("0x") || rest.starts_with("0X")) {
        rest.remove_prefix(2);
    }
    std::uintptr_t number = 0;
    const auto result = std::from_chars(rest.data(), rest.data() + rest.size(), number, 16);
    const bool isWhole = result.ec == std::errc() && result.ptr == rest.data() + rest.size();
    if (!isWhole || number == 0) {
        return false;
    }
    process = std::bit_cast<void*>(number);
    return true;
}

} // namespace process_handle_text
