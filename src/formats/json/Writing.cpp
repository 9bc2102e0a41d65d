#include "formats/json/Writing.h"

#include <algorithm>
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

/// True for elements that a JSON string contains as they are or behind a backslash: nearly all.
bool IsSimple(std::uint32_t unit) {
    return unit >= 0x20 && unit < surrogateBegin;
}

bool TakesBackslash(std::uint32_t unit) {
    return unit == L'"' || unit == L'\\';
}

/// Writes a simple element without a branch and returns the position after it.
wchar_t* PutSimple(wchar_t element, wchar_t* to) {
    *to = L'\\';
    to += static_cast<std::size_t>(TakesBackslash(Unit(element)));
    *to++ = element;
    return to;
}

/// Returns the number of backslashes that a block takes, plus `specialWeight` for each element that is not simple: one
/// sum, because compilers vectorise no loop with two results.
constexpr unsigned specialWeight = 256;
[[gnu::noinline]] unsigned WeightOf(const wchar_t* block) {
    unsigned weight = 0;
    for (std::size_t i = 0; i < blockLength; ++i) {
        const std::uint32_t unit = Unit(block[i]);
        weight += static_cast<unsigned>(unit == L'"') + static_cast<unsigned>(unit == L'\\') +
                  specialWeight * static_cast<unsigned>(unit - 0x20 >= surrogateBegin - 0x20);
    }
    return weight;
}

/// Writes leading blocks of simple elements, moves `to` behind them and returns the number of elements read.
std::size_t PutSimpleBlocks(std::wstring_view text, wchar_t*& to) {
    std::size_t length = 0;
    for (; text.size() - length >= blockLength; length += blockLength) {
        const wchar_t* const block = text.data() + length;
        const unsigned weight = WeightOf(block);
        if (weight >= specialWeight) {
            break;
        }
        if (weight == 0) {
            to = std::copy_n(block, blockLength, to);
            continue;
        }
        for (std::size_t i = 0; i < blockLength; ++i) {
            to = PutSimple(block[i], to);
        }
    }
    return length;
}

/// Writes less than a block behind `length` elements that were written, if the whole block at the end of the text goes
/// as it is: it is written again, so that it can be copied in one piece. Returns the number of elements read.
std::size_t PutEndAsBlock(std::wstring_view text, std::size_t length, wchar_t*& to) {
    const wchar_t* const block = text.data() + text.size() - blockLength;
    if (text.size() < blockLength || length + blockLength <= text.size() || WeightOf(block) > 0) {
        return length;
    }
    to = std::copy_n(block, blockLength, to - (length + blockLength - text.size()));
    return text.size();
}

/// The same for all leading simple elements. They take at most two elements each.
std::size_t PutSimpleElements(std::wstring_view text, wchar_t*& to) {
    std::size_t length = PutEndAsBlock(text, PutSimpleBlocks(text, to), to);
    while (length < text.size() && IsSimple(Unit(text[length]))) {
        to = PutSimple(text[length++], to);
    }
    return length;
}

/// Returns the letter of a short escape ("\n"); 0 if the unit has none.
wchar_t ShortEscape(std::uint32_t unit) {
    switch (unit) {
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

void AppendUnicodeEscape(std::uint32_t unit, Writer& json) {
    std::wstring escape;
    text::AppendUnicodeEscape(unit, escape);
    json.Put(escape);
}

void AppendEscape(std::uint32_t unit, Writer& json) {
    if (const wchar_t letter = ShortEscape(unit)) {
        json.Put(L'\\');
        json.Put(letter);
    } else {
        AppendUnicodeEscape(unit, json);
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

/// Appends the beginning of a text that is not simple and returns how many of its elements were read.
std::size_t AppendSpecial(std::wstring_view text, Writer& json) {
    const std::uint32_t unit = Unit(text[0]);
    if (unit < surrogateBegin) {
        AppendEscape(unit, json);
        return 1;
    }
    if (hasUtf16Elements && BeginsPair(text)) {
        json.Put(text.substr(0, 2));
        return 2;
    }
    if (IsSurrogate(unit)) {
        AppendUnicodeEscape(unit, json);
    } else {
        json.Put(unit <= lastCodePoint ? text[0] : static_cast<wchar_t>(text::replacementCharacter));
    }
    return 1;
}

enum class Impossible : std::int32_t { Replace, Stop };

/// Appends a text in quotes. Returns false if `impossible` is `Stop` and the text contains something that no JSON
/// string can represent.
bool AppendString(std::wstring_view text, Impossible impossible, Writer& json) {
    constexpr std::size_t part = 256;
    json.Put(L'"');
    while (!text.empty()) {
        const std::wstring_view beginning = text.substr(0, part);
        wchar_t* to = json.Room(2 * beginning.size());
        const std::size_t simple = PutSimpleElements(beginning, to);
        json.Advance(to);
        text.remove_prefix(simple);
        if (simple == beginning.size()) {
            continue;
        }
        if (impossible == Impossible::Stop && IsImpossible(text)) {
            return false;
        }
        text.remove_prefix(AppendSpecial(text, json));
    }
    json.Put(L'"');
    return true;
}

void AppendCodePoints(std::wstring_view text, Writer& json) {
    json.Put(L"{\"codePoints\":");
    wchar_t separator = L'[';
    for (const wchar_t element : text) {
        json.Put(separator);
        AppendNumber(Unit(element), json);
        separator = L',';
    }
    json.Put(L"]}");
}

} // namespace

void AppendNumber(std::int64_t number, Writer& json) {
    std::array<char, 20> digits;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    json.Advance(std::copy(digits.data(), end, json.Room(digits.size())));
}

void AppendText(std::wstring_view text, Writer& json) {
    const std::size_t begin = json.Length();
    if (!AppendString(text, Impossible::Stop, json)) {
        json.Cut(begin);
        AppendCodePoints(text, json);
    }
}

void AppendName(std::wstring_view name, Writer& json) {
    AppendString(name, Impossible::Replace, json);
    json.Put(L':');
}

} // namespace json
