#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// Strict UTF-8 of files and messages, optimized for ASCII. Pure functions; threads: any.
namespace text {

/// The capacity that a text needs so that `EncodeUtf8` allocates no memory for `length` elements of ASCII.
std::size_t RoomForAscii(std::size_t length);

/// Converts wide text to UTF-8. On failure returns false and sets `badAt` to the index of the first element that is not
/// a character (an unpaired surrogate, a value beyond U+10FFFF); `utf8` is then unspecified.
bool EncodeUtf8(std::wstring_view text, std::string& utf8, std::size_t& badAt);

/// Returns the offset of the first byte that is not valid UTF-8 (overlong forms and surrogates are invalid); nothing if
/// all bytes are valid.
std::optional<std::size_t> FindInvalidUtf8(std::string_view bytes);

/// Returns 3 if a UTF-8 text begins with a byte order mark, otherwise 0.
std::size_t ByteOrderMarkLength(std::string_view bytes);

} // namespace text
