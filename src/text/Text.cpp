#include "text/Text.h"

#include <cstddef>
#include <cstdint>

#include "text/CodeUnits.h"
#include "text/Utf8Sequence.h"

namespace text {
namespace {

constexpr std::uint32_t replacementCharacter = 0xFFFD;
// A byte B that is not part of valid UTF-8 is carried as U+DC00 + B.
constexpr std::uint32_t escapedByteBase = 0xDC00;

bool IsEscapedByte(std::uint32_t value) {
    return value >= 0xDC80 && value <= 0xDCFF;
}

/// A surrogate is no character: strict UTF-8 has none.
Utf8Sequence TakeCharacter(std::string_view bytes) {
    const Utf8Sequence sequence = TakeUtf8(bytes);
    return IsSurrogate(sequence.value) ? Utf8Sequence{} : sequence;
}

struct Decoded {
    std::uint32_t value = 0;
    std::size_t length = 0;
};

/// The code point at `at`, a surrogate pair taken together; an unpaired surrogate is its own value.
template <typename View>
Decoded DecodeWide(View text, std::size_t at) {
    const std::uint32_t first = Unit(text[at]);
    if (IsHighSurrogate(first) && at + 1 < text.size() && IsLowSurrogate(Unit(text[at + 1]))) {
        return {JoinSurrogates(first, Unit(text[at + 1])), 2};
    }
    return {first, 1};
}

void AppendEncoded(std::string& bytes, std::uint32_t value) {
    if (IsEscapedByte(value)) {
        bytes += static_cast<char>(value - escapedByteBase);
        return;
    }
    const bool encodable = value <= lastCodePoint && !IsSurrogate(value);
    AppendUtf8(bytes, encodable ? value : replacementCharacter);
}

} // namespace

std::wstring FromUtf8(std::string_view bytes) {
    std::wstring text;
    text.reserve(bytes.size());
    for (std::size_t at = 0; at < bytes.size();) {
        const Utf8Sequence decoded = TakeCharacter(bytes.substr(at));
        const bool valid = decoded.length != 0;
        AppendWide(text, valid ? decoded.value : escapedByteBase + static_cast<unsigned char>(bytes[at]));
        at += valid ? decoded.length : 1;
    }
    return text;
}

std::string ToUtf8(std::wstring_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const Decoded decoded = DecodeWide(text, at);
        AppendEncoded(bytes, decoded.value);
        at += decoded.length;
    }
    return bytes;
}

std::optional<std::wstring> FromStrictUtf8(std::string_view bytes) {
    std::wstring text;
    text.reserve(bytes.size());
    for (std::size_t at = 0; at < bytes.size();) {
        const Utf8Sequence decoded = TakeCharacter(bytes.substr(at));
        if (decoded.length == 0) {
            return std::nullopt;
        }
        AppendWide(text, decoded.value);
        at += decoded.length;
    }
    return text;
}

std::u16string ToUtf16(std::wstring_view text) {
    std::u16string units;
    units.reserve(text.size());
    for (const wchar_t unit : text) {
        char16_t pair[2];
        const char16_t* const end = PutUtf16(Unit(unit) <= lastCodePoint ? Unit(unit) : replacementCharacter, pair);
        units.append(pair, static_cast<std::size_t>(end - pair));
    }
    return units;
}

std::wstring FromUtf16(std::u16string_view units) {
    std::wstring text;
    text.reserve(units.size());
    for (std::size_t at = 0; at < units.size();) {
        const Decoded decoded = DecodeWide(units, at);
        AppendWide(text, decoded.value);
        at += decoded.length;
    }
    return text;
}

} // namespace text
