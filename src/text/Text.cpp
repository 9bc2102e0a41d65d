#include "text/Text.h"

#include <cstddef>
#include <cstdint>

#include "text/CodeUnits.h"
#include "text/Utf8.h"

namespace text {
namespace {

// A byte B that is not part of valid UTF-8 is represented as U+DC00 + B.
constexpr std::uint32_t escapedByteBase = 0xDC00;

bool IsEscapedByte(std::uint32_t value) {
    return value >= 0xDC80 && value <= 0xDCFF;
}

void AppendEncoded(std::string& bytes, std::uint32_t value) {
    if (IsEscapedByte(value)) {
        bytes += static_cast<char>(value - escapedByteBase);
        return;
    }
    AppendUtf8(bytes, IsCharacter(value) ? value : replacementCharacter);
}

} // namespace

std::wstring FromUtf8(std::string_view bytes) {
    std::wstring text;
    text.reserve(bytes.size());
    while (!bytes.empty()) {
        const CodePoint taken = TakeUtf8(bytes);
        const bool isValid = taken.length != 0;
        AppendWide(text, isValid ? taken.value : escapedByteBase + static_cast<unsigned char>(bytes[0]));
        bytes.remove_prefix(isValid ? taken.length : 1);
    }
    return text;
}

std::string ToUtf8(std::wstring_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    while (!text.empty()) {
        const CodePoint taken = TakeUtf16(text);
        AppendEncoded(bytes, taken.value);
        text.remove_prefix(taken.length);
    }
    return bytes;
}

std::optional<std::wstring> FromStrictUtf8(std::string_view bytes) {
    return DecodeUtf8<Surrogates::Refused>(bytes);
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
    while (!units.empty()) {
        const CodePoint taken = TakeUtf16(units);
        AppendWide(text, taken.value);
        units.remove_prefix(taken.length);
    }
    return text;
}

} // namespace text
