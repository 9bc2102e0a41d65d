#include "formats/json/Writing.h"

#include <array>
#include <charconv>

#include "text/Blocks.h"
#include "text/CodeUnits.h"
#include "text/Hexadecimal.h"

namespace json {

using text::blockLength;
using text::hasUtf16Elements;
using text::IsSurrogate;
using text::lastCodePoint;
using text::surrogateBegin;
using text::Unit;

namespace {

/// True for elements that a JSON string contains unescaped.
bool IsPlain(std::uint32_t unit) {
    return unit >= 0x20 && unit != L'"' && unit != L'\\' && unit < surrogateBegin;
}

bool IsPlainBlock(const wchar_t* elements) {
    unsigned special = 0;
    for (std::size_t i = 0; i < blockLength; ++i) {
        const std::uint32_t unit = Unit(elements[i]);
        special |= static_cast<unsigned>(unit < 0x20) | static_cast<unsigned>(unit == L'"') |
                   static_cast<unsigned>(unit == L'\\') | static_cast<unsigned>(unit >= surrogateBegin);
    }
    return special == 0;
}

/// Returns the number of plain elements at the beginning.
std::size_t PlainLength(std::wstring_view text) {
    std::size_t length = 0;
    while (text.size() - length >= blockLength && IsPlainBlock(text.data() + length)) {
        length += blockLength;
    }
    while (length < text.size() && IsPlain(Unit(text[length]))) {
        ++length;
    }
    return length;
}

/// Returns the letter of a short escape ("\n"); 0 if the unit has none.
wchar_t ShortEscape(std::uint32_t unit) {
    switch (unit) {
    case L'"':
    case L'\\':
        return static_cast<wchar_t>(unit);
    case L'\b':
        return L'b';
    case L'\f':
        return L'f';
    case L'\n':
        return L'n';
    case L'\r':
        return L'r';
    case L'\t':
        return L't';
    default:
        return 0;
    }
}

void AppendEscape(std::uint32_t unit, std::wstring& json) {
    if (const wchar_t letter = ShortEscape(unit)) {
        json += {L'\\', letter};
    } else {
        text::AppendUnicodeEscape(unit, json);
    }
}

bool BeginsPair(std::wstring_view text) {
    return text::TakeUtf16(text).length == 2;
}

/// True for what no JSON string can represent, which occurs only in texts of 32-bit elements: a value beyond Unicode,
/// and a surrogate pair in two elements, which would be read back as one character.
bool IsImpossible(std::wstring_view text) {
    return !hasUtf16Elements && (Unit(text[0]) > lastCodePoint || BeginsPair(text));
}

/// Appends the beginning of a text that is not plain and returns how many of its elements were read.
std::size_t AppendSpecial(std::wstring_view text, std::wstring& json) {
    const std::uint32_t unit = Unit(text[0]);
    if (unit < surrogateBegin) {
        AppendEscape(unit, json);
        return 1;
    }
    if (hasUtf16Elements && BeginsPair(text)) {
        json += text.substr(0, 2);
        return 2;
    }
    if (IsSurrogate(unit)) {
        text::AppendUnicodeEscape(unit, json);
    } else {
        json += unit <= lastCodePoint ? text[0] : static_cast<wchar_t>(text::replacementCharacter);
    }
    return 1;
}

enum class Impossible : std::int32_t { Replace, Stop };

/// Appends a text in quotes. Returns false if `impossible` is `Stop` and the text contains something that no JSON
/// string can represent.
bool AppendString(std::wstring_view text, Impossible impossible, std::wstring& json) {
    json += L'"';
    while (!text.empty()) {
        const std::size_t plain = PlainLength(text);
        json += text.substr(0, plain);
        text.remove_prefix(plain);
        if (text.empty()) {
            break;
        }
        if (impossible == Impossible::Stop && IsImpossible(text)) {
            return false;
        }
        text.remove_prefix(AppendSpecial(text, json));
    }
    json += L'"';
    return true;
}

void AppendCodePoints(std::wstring_view text, std::wstring& json) {
    json += L"{\"codePoints\":";
    wchar_t separator = L'[';
    for (const wchar_t element : text) {
        json += separator;
        AppendNumber(Unit(element), json);
        separator = L',';
    }
    json += L"]}";
}

} // namespace

void AppendNumber(std::int64_t number, std::wstring& json) {
    std::array<char, 20> digits;
    const auto end = std::to_chars(digits.begin(), digits.end(), number).ptr;
    json.append(digits.begin(), end);
}

void AppendText(std::wstring_view text, std::wstring& json) {
    const std::size_t begin = json.size();
    if (!AppendString(text, Impossible::Stop, json)) {
        json.resize(begin);
        AppendCodePoints(text, json);
    }
}

void AppendName(std::wstring_view name, std::wstring& json) {
    AppendString(name, Impossible::Replace, json);
    json += L':';
}

} // namespace json
