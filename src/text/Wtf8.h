#pragma once

#include <optional>
#include <string>
#include <string_view>

/// WTF-8: UTF-8 extended to unpaired surrogates, which strict UTF-8 cannot encode. A wide text with values up to
/// U+10FFFF is encoded and decoded without loss on the same system: unpaired UTF-16 surrogates on Windows, and on Linux
/// U+DC80 to U+DCFF, which represent bytes of file names. Pure functions; threads: any.
namespace text {

/// Appends the encoded text to `bytes`. A value beyond U+10FFFF, possible only in a wide text of Linux, becomes U+FFFD.
void AppendWtf8(std::string& bytes, std::wstring_view text);

/// Decodes bytes. Returns nothing for overlong, truncated or stray bytes and for values beyond U+10FFFF.
[[nodiscard]] std::optional<std::wstring> FromWtf8(std::string_view bytes);

/// Decodes `bytes`, which must be valid, and appends the result to `text`. Bytes of 0xFF are padding and are skipped.
void AppendTrustedWtf8(std::string_view bytes, std::wstring& text);

/// Decodes such bytes to a text.
[[nodiscard]] std::wstring FromTrustedWtf8(std::string_view bytes);

} // namespace text
