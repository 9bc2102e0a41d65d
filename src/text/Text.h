#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Conversions between wide text (UTF-16 on Windows, UTF-32 on Linux) and bytes. Pure functions; threads: any.
namespace text {

/// Converts UTF-8 to wide text. Each byte that is not valid UTF-8 becomes U+DC80 to U+DCFF, so that every name that
/// Linux allows can be represented as text and converted back by `ToUtf8`.
std::wstring FromUtf8(std::string_view bytes);

/// Converts wide text to UTF-8; the inverse of `FromUtf8`: U+DC80 to U+DCFF become the byte they represent. Any other
/// unpaired surrogate or value beyond U+10FFFF becomes U+FFFD.
std::string ToUtf8(std::wstring_view text);

/// Converts UTF-8 to wide text. Returns nothing if the bytes are not valid UTF-8 (overlong forms and surrogates are
/// invalid).
std::optional<std::wstring> FromStrictUtf8(std::string_view bytes);

/// Converts a text to UTF-16 code units, the same on both systems. Unpaired surrogates are kept; a value beyond
/// U+10FFFF becomes U+FFFD.
std::u16string ToUtf16(std::wstring_view text);

/// Converts UTF-16 code units to wide text; unpaired surrogates are kept.
std::wstring FromUtf16(std::u16string_view units);

} // namespace text
