#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// Untrusted texts that are shown in a line of a log or a terminal. Pure functions; threads: any.
namespace text {

/// True for characters that end a line, control a terminal, or change the direction of text (bidirectional controls):
/// with these a text can forge lines or disguise itself.
bool IsControlOrBidi(std::uint32_t character);

/// True for a text of at most `longest` units without characters below U+0020.
bool IsOneLine(std::wstring_view text, std::size_t longest);

/// Returns the text with such characters, and lone surrogates, escaped as in C ("\n", "\u001b").
std::wstring Escaped(std::wstring_view text);

/// The escaped text as UTF-8.
std::string EscapedUtf8(std::wstring_view text);

} // namespace text
