#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// UTF-8 of files and messages: characters and nothing else, at the speed of memory where they are ASCII. Pure
/// functions, any thread.
namespace text {

/// Wide to UTF-8. False, with `badAt` the index of the first element that is no character (an unpaired surrogate, a
/// value beyond U+10FFFF), when there is one; `utf8` then has no meaning.
bool EncodeUtf8(std::wstring_view text, std::string& utf8, std::size_t& badAt);

/// The offset of the first byte that is not valid UTF-8 (overlong forms and surrogates included); nothing when all are.
std::optional<std::size_t> FindInvalidUtf8(std::string_view bytes);

/// 3 when a UTF-8 text begins with a byte order mark, else 0.
std::size_t ByteOrderMarkLength(std::string_view bytes);

} // namespace text
