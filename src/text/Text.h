#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Conversions between the library's wide text (UTF-16 on Windows, UTF-32 on Linux) and bytes. Pure functions, any
/// thread.
namespace text {

/// UTF-8 to wide. Bytes that are not valid UTF-8 become U+DC80 to U+DCFF, one each, so that every name that
/// Linux allows can be carried as text and turned back by `ToUtf8`.
std::wstring FromUtf8(std::string_view bytes);

/// Wide to UTF-8, the inverse of `FromUtf8`: U+DC80 to U+DCFF become the byte they stand for. Any other unpaired
/// surrogate or value beyond U+10FFFF becomes U+FFFD.
std::string ToUtf8(std::wstring_view text);

/// UTF-8 to wide; nothing when a byte sequence is not valid UTF-8 (overlong forms and surrogates included).
std::optional<std::wstring> FromStrictUtf8(std::string_view bytes);

/// The UTF-16 code units of a text, the same on both systems. Unpaired surrogates stay as they are; a value beyond
/// U+10FFFF becomes U+FFFD.
std::u16string ToUtf16(std::wstring_view text);

/// UTF-16 code units to wide; unpaired surrogates stay as they are.
std::wstring FromUtf16(std::u16string_view units);

} // namespace text
