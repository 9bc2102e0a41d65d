#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// Texts of others that are shown in a line: in a log, on a terminal. Pure functions, any thread.
namespace text {

/// True for characters that end the line for some reader, steer the terminal that shows them, or turn the direction in
/// which the text beside them is read: with these a text can forge lines and pass itself off as another.
bool IsControlOrBidi(std::uint32_t character);

/// The text with such characters, and lone surrogates, written as they are in C ("\n", "\u001b").
std::wstring Escaped(std::wstring_view text);

/// The escaped text as UTF-8.
std::string EscapedUtf8(std::wstring_view text);

} // namespace text
