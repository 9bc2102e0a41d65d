#include "transport/local_socket/Wtf8.h"

#include <cstddef>
#include <cstdint>

#include "text/CodeUnits.h"
#include "text/Utf8Sequence.h"

namespace local_socket {

using text::hasUtf16Elements;
using text::IsHighSurrogate;
using text::IsLowSurrogate;
using text::Unit;

namespace {

constexpr std::uint32_t replacement = 0xFFFD;

/// Reads one character, or one surrogate without a partner.
std::uint32_t TakeCharacter(std::wstring_view text, std::size_t& index) {
    const std::uint32_t unit = Unit(text[index++]);
    if (hasUtf16Elements && IsHighSurrogate(unit) && index < text.size() && IsLowSurrogate(Unit(text[index]))) {
        return text::JoinSurrogates(unit, Unit(text[index++]));
    }
    return unit > text::lastCodePoint ? replacement : unit;
}

} // namespace

void AppendEncoded(std::string& bytes, std::wstring_view text) {
    bytes.reserve(bytes.size() + text.size());
    for (std::size_t index = 0; index < text.size();) {
        text::AppendUtf8(bytes, TakeCharacter(text, index));
    }
}

std::optional<std::wstring> DecodeText(std::string_view bytes) {
    std::wstring text;
    text.reserve(bytes.size());
    for (std::size_t index = 0; index < bytes.size();) {
        const text::Utf8Sequence sequence = text::TakeUtf8(bytes.substr(index));
        if (sequence.length == 0) {
            return std::nullopt;
        }
        text::AppendWide(text, sequence.value);
        index += sequence.length;
    }
    return text;
}

} // namespace local_socket
