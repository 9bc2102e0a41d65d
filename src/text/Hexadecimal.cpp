#include "text/Hexadecimal.h"

#include <array>
#include <charconv>
#include <limits>

#include "text/CodeUnits.h"

namespace text {
namespace {

constexpr std::wstring_view handlePrefix = L"0x";

} // namespace

std::wstring HexadecimalText(std::uint64_t number) {
    std::array<char, 16> digits{};
    const auto end = std::to_chars(digits.begin(), digits.end(), number, 16).ptr;
    return {digits.begin(), end};
}

std::wstring HexadecimalText(std::span<const std::uint8_t> bytes) {
    std::wstring text;
    text.reserve(bytes.size() * 2);
    for (const std::uint8_t byte : bytes) {
        text += hexadecimalDigits[byte >> 4];
        text += hexadecimalDigits[byte & 0xF];
    }
    return text;
}

std::optional<std::uint64_t> ReadHexadecimal(std::wstring_view digits) {
    constexpr std::uint64_t mostBeforeLastDigit = std::numeric_limits<std::uint64_t>::max() >> 4;
    std::uint64_t number = 0;
    for (const wchar_t digit : digits) {
        const int value = HexadecimalValue(Unit(digit));
        if (value < 0 || number > mostBeforeLastDigit) {
            return std::nullopt;
        }
        number = number << 4 | static_cast<std::uint64_t>(value);
    }
    return digits.empty() ? std::nullopt : std::optional(number);
}

std::wstring HandleText(std::uint64_t handle) {
    return std::wstring(handlePrefix) + HexadecimalText(handle);
}

std::optional<std::uint64_t> ReadHandle(std::wstring_view text) {
    if (text.starts_with(handlePrefix) || text.starts_with(L"0X")) {
        text.remove_prefix(handlePrefix.size());
    }
    const std::optional<std::uint64_t> handle = ReadHexadecimal(text);
    return handle.value_or(0) == 0 ? std::nullopt : handle;
}

void AppendUnicodeEscape(std::uint32_t unit, std::wstring& text) {
    text += L"\\u";
    for (const int shift : {12, 8, 4, 0}) {
        text += hexadecimalDigits[unit >> shift & 0xF];
    }
}

} // namespace text
