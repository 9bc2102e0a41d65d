#include "formats/ProcessHandleText.h"

#include <array>
#include <charconv>
#include <string_view>

#include "text/StrictUtf8.h"

namespace process_handle_text {

std::wstring Format(std::uint64_t number) {
    std::array<char, 16> digits;
    const auto end = std::to_chars(digits.begin(), digits.end(), number, 16).ptr;
    return L"0x" + std::wstring(digits.begin(), end);
}

bool Parse(const std::wstring& text, std::uint64_t& number) {
    std::string digits;
    std::size_t badAt = 0;
    if (!text::EncodeUtf8(text, digits, badAt)) {
        return false;
    }
    std::string_view rest = digits;
    if (rest.starts_with("0x") || rest.starts_with("0X")) {
        rest.remove_prefix(2);
    }
    std::uint64_t read = 0;
    const auto result = std::from_chars(rest.data(), rest.data() + rest.size(), read, 16);
    if (result.ec != std::errc() || result.ptr != rest.data() + rest.size() || read == 0) {
        return false;
    }
    number = read;
    return true;
}

} // namespace process_handle_text
