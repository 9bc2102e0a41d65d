#include "text/EscapeControls.h"

#include <algorithm>
#include <cstddef>

#include "text/CodeUnits.h"

namespace text {
namespace {

bool NeedsLook(wchar_t character) {
    const std::uint32_t unit = Unit(character);
    return IsControlOrBidi(unit) || IsSurrogate(unit);
}

void AppendEscaped(std::uint32_t unit, std::wstring& text) {
    if (unit == L'\n') {
        text += L"\\n";
    } else if (unit == L'\r') {
        text += L"\\r";
    } else if (unit == L'\t') {
        text += L"\\t";
    } else {
        text += L"\\u";
        for (int shift = 12; shift >= 0; shift -= 4) {
            text += L"0123456789abcdef"[(unit >> shift) & 0xf];
        }
    }
}

/// Only where a unit has 16 bits do two surrogates make one character.
bool IsPairAt(const std::wstring& text, std::size_t index) {
    return hasUtf16Elements && index + 1 < text.size() && IsHighSurrogate(Unit(text[index])) &&
           IsLowSurrogate(Unit(text[index + 1]));
}

} // namespace

bool IsControlOrBidi(std::uint32_t character) {
    const bool isControl = character < 0x20 || (character >= 0x7F && character <= 0x9F);
    const bool endsLine = character == 0x2028 || character == 0x2029;
    const bool turnsDirection = character == 0x061C || character == 0x200E || character == 0x200F ||
                                (character >= 0x202A && character <= 0x202E) ||
                                (character >= 0x2066 && character <= 0x2069);
    return isControl || endsLine || turnsDirection;
}

std::wstring Escaped(const std::wstring& text) {
    if (std::none_of(text.begin(), text.end(), NeedsLook)) {
        return text;
    }
    std::wstring escaped;
    escaped.reserve(text.size() + 16);
    for (std::size_t index = 0; index < text.size(); ++index) {
        if (IsPairAt(text, index)) {
            escaped.append(text, index++, 2);
        } else if (NeedsLook(text[index])) {
            AppendEscaped(Unit(text[index]), escaped);
        } else {
            escaped += text[index];
        }
    }
    return escaped;
}

} // namespace text
