#include "front_end/output/PortableJson.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>

#include "text/CodeUnits.h"
#include "text/Hexadecimal.h"

namespace front_end {
namespace {

/// The unit of an escape "\ud800" at the beginning of a text.
std::optional<std::uint32_t> EscapedUnit(std::wstring_view text) {
    constexpr std::size_t digits = 4;
    if (!text.starts_with(L"\\u") || text.size() < 2 + digits) {
        return std::nullopt;
    }
    std::uint32_t unit = 0;
    for (const wchar_t digit : text.substr(2, digits)) {
        unit = unit << 4 | static_cast<std::uint32_t>(text::HexadecimalValue(static_cast<unsigned char>(digit)));
    }
    return unit;
}

/// The first character inside a JSON string, and how many elements it takes there.
text::CodePoint TakeCharacter(std::wstring_view inside) {
    constexpr std::wstring_view letters = L"bfnrt";
    constexpr std::wstring_view controls = L"\b\f\n\r\t";
    if (inside[0] != L'\\') {
        return text::TakeWide(inside);
    }
    if (const auto unit = EscapedUnit(inside)) {
        return {*unit, 6};
    }
    const std::size_t letter = letters.find(inside[1]);
    return {text::Unit(letter == std::wstring_view::npos ? inside[1] : controls[letter]), 2};
}

template <typename Visit>
void ForEachCharacter(std::wstring_view inside, Visit visit) {
    while (!inside.empty()) {
        const text::CodePoint character = TakeCharacter(inside);
        visit(character.value, inside.substr(0, character.length));
        inside.remove_prefix(character.length);
    }
}

bool HasSurrogate(std::wstring_view inside) {
    bool hasOne = false;
    ForEachCharacter(inside, [&](std::uint32_t value, std::wstring_view) { hasOne |= text::IsSurrogate(value); });
    return hasOne;
}

void AppendCodePoints(std::wstring_view inside, std::wstring& json) {
    json += L"{\"codePoints\":";
    wchar_t separator = L'[';
    ForEachCharacter(inside, [&](std::uint32_t value, std::wstring_view) {
        json += std::exchange(separator, L',');
        json::AppendNumber(value, json);
    });
    json += L"]}";
}

void AppendName(std::wstring_view inside, std::wstring& json) {
    json += L'"';
    ForEachCharacter(inside, [&](std::uint32_t value, std::wstring_view written) {
        json += text::IsSurrogate(value) ? L"\xfffd" : written;
    });
    json += L'"';
}

void AppendString(std::wstring_view inside, bool isName, std::wstring& json) {
    if (!HasSurrogate(inside)) {
        json += L'"';
        json += inside;
        json += L'"';
    } else if (isName) {
        AppendName(inside, json);
    } else {
        AppendCodePoints(inside, json);
    }
}

/// How much of a text that begins inside a JSON string is inside.
std::size_t LengthInside(std::wstring_view text) {
    std::size_t length = 0;
    while (text[length] != L'"') {
        length += text[length] == L'\\' ? std::size_t{2} : std::size_t{1};
    }
    return length;
}

} // namespace

void MakePortable(std::wstring& json, std::size_t begin) {
    if (json.find(L"\\ud", begin) == std::wstring::npos) {
        return;
    }
    const std::wstring written = json.substr(begin);
    json.resize(begin);
    std::wstring_view rest = written;
    for (std::size_t quote = rest.find(L'"'); quote != std::wstring_view::npos; quote = rest.find(L'"')) {
        json += rest.substr(0, quote);
        rest.remove_prefix(quote + 1);
        const std::wstring_view inside = rest.substr(0, LengthInside(rest));
        rest.remove_prefix(inside.size() + 1);
        AppendString(inside, rest.starts_with(L':'), json);
    }
    json += rest;
}

} // namespace front_end
