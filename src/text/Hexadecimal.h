#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

/// Hexadecimal numbers in texts, written in lower case. Pure functions; threads: any.
namespace text {

inline constexpr std::wstring_view hexadecimalDigits = L"0123456789abcdef";

/// Returns the value of a digit in either case; -1 for any other character.
constexpr int HexadecimalValue(std::uint32_t digit) {
    if (digit >= '0' && digit <= '9') {
        return static_cast<int>(digit - '0');
    }
    const std::uint32_t lower = digit | 0x20U;
    return lower >= 'a' && lower <= 'f' ? static_cast<int>(lower - 'a') + 10 : -1;
}

/// Returns the digits of a number without leading zeros.
std::wstring HexadecimalText(std::uint64_t number);

/// Returns two digits for each byte.
std::wstring HexadecimalText(std::span<const std::uint8_t> bytes);

/// Parses digits in either case. Returns nothing for an empty text, any other character, or a number of more than 64
/// bits.
[[nodiscard]] std::optional<std::uint64_t> ReadHexadecimal(std::wstring_view digits);

/// Formats a handle as it is passed between programs: "0x1f4".
std::wstring HandleText(std::uint64_t handle);

/// Parses digits with or without "0x" or "0X". Returns nothing for any other text, and for 0.
[[nodiscard]] std::optional<std::uint64_t> ReadHandle(std::wstring_view text);

/// Appends the escape of a UTF-16 unit in the format of C and JSON: "\u001b".
void AppendUnicodeEscape(std::uint32_t unit, std::wstring& text);

} // namespace text
