#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// Decimal numbers in texts, the same in every locale and on both systems. Pure functions; threads: any.
namespace numbers {

/// Parses the leading number of a text as `_wtoi` of the Windows runtime does: leading blanks and one sign are allowed,
/// parsing stops at the first character that is not an ASCII digit, a text without digits yields 0, and a number beyond
/// 32 bits yields the nearest value that fits.
std::int32_t ReadInteger(std::wstring_view text);

/// The decimal digits of a number, with a minus sign when it is negative.
std::wstring DecimalText(std::int32_t number);

} // namespace numbers
