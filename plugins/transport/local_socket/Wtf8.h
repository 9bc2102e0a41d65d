#pragma once

#include <optional>
#include <string>
#include <string_view>

/// How text travels: UTF-8 for everything that is text, and the same scheme for surrogates without a partner, which
/// strict UTF-8 has no form for. So whatever a wide text holds arrives unchanged: halves of UTF-16 pairs on Windows,
/// the U+DC80 to U+DCFF that stand for bytes of file names on Linux. (Both ends run on one machine and system.)
/// A value beyond U+10FFFF, which a wide text of Linux could hold but which is no character, becomes U+FFFD.
namespace local_socket {

/// Appends the encoded text to `bytes`.
void AppendEncoded(std::string& bytes, std::wstring_view text);

/// The text of encoded bytes; nothing when they are not such: overlong, truncated or stray bytes, beyond U+10FFFF.
[[nodiscard]] std::optional<std::wstring> DecodeText(std::string_view bytes);

} // namespace local_socket
