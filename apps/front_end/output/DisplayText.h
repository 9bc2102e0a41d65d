#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Text for terminals, where some characters take two columns and some none.
namespace front_end {

/// The text on one line, without terminal control sequences: control characters become blanks, invalid characters
/// become U+FFFD.
std::wstring OneLine(std::wstring_view text);

/// The number of columns of a text without control characters.
std::size_t DisplayWidth(std::wstring_view text);

/// `text` truncated to at most `width` columns; a truncated text ends in an ellipsis.
std::wstring Cut(std::wstring_view text, std::size_t width);

/// The end of `text`, truncated to at most `width` columns; a truncated text begins with an ellipsis.
std::wstring CutBeginning(std::wstring_view text, std::size_t width);

} // namespace front_end
