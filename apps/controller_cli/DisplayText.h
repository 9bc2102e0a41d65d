#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Texts as a terminal shows them: some characters take two columns, some none.
namespace controller_cli {

/// The text on one line, with nothing in it that a terminal would obey: control characters become blanks, what is no
/// character U+FFFD.
std::wstring OneLine(std::wstring_view text);

/// The columns that a text without control characters takes.
std::size_t DisplayWidth(std::wstring_view text);

/// `text` cut to at most `width` columns; a cut text ends in an ellipsis.
std::wstring Cut(std::wstring_view text, std::size_t width);

/// The end of `text`, cut to at most `width` columns; a cut text begins with an ellipsis.
std::wstring CutBeginning(std::wstring_view text, std::size_t width);

/// `text` cut, or filled with blanks, to exactly `width` columns.
std::wstring Fitted(std::wstring_view text, std::size_t width);

} // namespace controller_cli
