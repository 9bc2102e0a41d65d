#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// Between the library's wide text and the UTF-8 of JSON. Pure functions, any thread.
///
/// While a text is being read it is held in "marked UTF-8": UTF-8 in which a lone surrogate, which JSON can write only
/// as an escape, stands in the three bytes that UTF-8 would give it, and bytes of 0xFF stand for nothing.
namespace json {

/// Wide to UTF-8. False, with `badAt` the index of the first element that is no character (an unpaired surrogate, a
/// value beyond U+10FFFF), when there is one; `utf8` then has no meaning.
bool EncodeUtf8(std::wstring_view text, std::string& utf8, std::size_t& badAt);

/// The offset of the first byte that is not valid UTF-8 (overlong forms and surrogates included); nothing when all are.
std::optional<std::size_t> FindInvalidUtf8(std::string_view bytes);

/// 3 when a UTF-8 text begins with a byte order mark, else 0.
std::size_t ByteOrderMarkLength(std::string_view bytes);

/// Rewrites each escape of a lone surrogate in a JSON text into its mark of the same length. `json` is valid UTF-8.
void MarkLoneSurrogates(std::string& json);

/// Appends marked UTF-8, of which UTF-8 is a part, to a wide text.
void AppendDecoded(std::string_view marked, std::wstring& text);

/// The text that marked UTF-8 stands for.
std::wstring Decode(std::string_view marked);

/// Appends a Unicode character, or a single UTF-16 code unit. False when a wide text cannot hold the number.
[[nodiscard]] bool AppendCodePoint(std::uint32_t codePoint, std::wstring& text);

} // namespace json
