#include "text/Text.h"

#include <algorithm>
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

/// Most text is ASCII, which every encoding copies.
template <class View>
std::size_t AsciiLength(View text) {
    const auto isOther = [](typename View::value_type element) { return (element & ~0x7F) != 0; };
    return static_cast<std::size_t>(std::find_if(text.begin(), text.end(), isOther) - text.begin());
}

/// Moves the ASCII at the beginning of `from` to the end of `to`.
template <class View, class Text>
void MoveAscii(View& from, Text& to) {
    const std::size_t length = AsciiLength(from);
    const std::size_t before = to.size();
    to.resize(before + length);
    std::transform(from.begin(), from.begin() + static_cast<std::ptrdiff_t>(length),
                   to.begin() + static_cast<std::ptrdiff_t>(before),
                   [](typename View::value_type element) { return static_cast<typename Text::value_type>(element); });
    from.remove_prefix(length);
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
    for (MoveAscii(bytes, text); !bytes.empty(); MoveAscii(bytes, text)) {
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
    for (MoveAscii(text, bytes); !text.empty(); MoveAscii(text, bytes)) {
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
    for (MoveAscii(text, units); !text.empty(); MoveAscii(text, units)) {
        const std::uint32_t unit = Unit(text.front());
        char16_t pair[2];
        const char16_t* const end = PutUtf16(unit <= lastCodePoint ? unit : replacementCharacter, pair);
        units.append(pair, static_cast<std::size_t>(end - pair));
        text.remove_prefix(1);
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
