#pragma once

#include <optional>
#include <string>
#include <string_view>

/// WTF-8: UTF-8 for everything that is text, and the same scheme for surrogates without a partner, which strict UTF-8
/// has no form for. So whatever a wide text holds comes back unchanged on the same system: halves of UTF-16 pairs on
/// Windows, the U+DC80 to U+DCFF that stand for bytes of file names on Linux. Pure functions, any thread.
namespace text {

/// Appends the encoded text to `bytes`. A value beyond U+10FFFF, which a wide text of Linux could hold but which is no
/// character, becomes U+FFFD.
void AppendWtf8(std::string& bytes, std::wstring_view text);

/// The text of encoded bytes; nothing when they are not such: overlong, truncated or stray bytes, beyond U+10FFFF.
[[nodiscard]] std::optional<std::wstring> FromWtf8(std::string_view bytes);

/// Appends to `text` what `bytes` stand for, which are known to be valid, or bytes of 0xFF, which stand for nothing.
void AppendTrustedWtf8(std::string_view bytes, std::wstring& text);

/// The text that such bytes stand for.
[[nodiscard]] std::wstring FromTrustedWtf8(std::string_view bytes);

} // namespace text
