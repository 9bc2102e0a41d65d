#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// Decimal numbers in texts, the same in every locale and on both systems.
namespace numbers {

/// The number that a text begins with, as the Windows runtime's `_wtoi` reads it: leading blanks and one sign are
/// allowed, reading stops at the first character that is no ASCII digit, no digits give 0, and a number beyond 32 bits
/// gives the nearest one that fits.
std::int32_t ReadInteger(std::wstring_view text);

/// The decimal digits of a number, with a minus sign when it is negative.
std::wstring DecimalText(std::int32_t number);

} // namespace numbers
