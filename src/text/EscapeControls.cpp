#include "text/EscapeControls.h"

#include <algorithm>

#include "text/CodeUnits.h"
#include "text/Hexadecimal.h"
#include "text/Text.h"

namespace text {
namespace {

bool NeedsEscape(std::uint32_t character) {
    return IsControlOrBidi(character) || IsSurrogate(character);
}

void AppendEscaped(std::uint32_t unit, std::wstring& text) {
    if (unit == L'\n') {
        text += L"\\n";
    } else if (unit == L'\r') {
        text += L"\\r";
    } else if (unit == L'\t') {
        text += L"\\t";
    } else {
        AppendUnicodeEscape(unit, text);
    }
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

bool IsOneLine(std::wstring_view text, std::size_t longest) {
    const auto isControl = [](wchar_t character) { return character < 0x20; };
    return text.size() <= longest && std::none_of(text.begin(), text.end(), isControl);
}

std::wstring Escaped(std::wstring_view text) {
    if (std::none_of(text.begin(), text.end(), [](wchar_t element) { return NeedsEscape(Unit(element)); })) {
        return std::wstring(text);
    }
    std::wstring escaped;
    escaped.reserve(text.size() + 16);
    while (!text.empty()) {
        const CodePoint taken = TakeWide(text);
        if (NeedsEscape(taken.value)) {
            AppendEscaped(taken.value, escaped);
        } else {
            escaped += text.substr(0, taken.length);
        }
        text.remove_prefix(taken.length);
    }
    return escaped;
}

std::string EscapedUtf8(std::wstring_view text) {
    return ToUtf8(Escaped(text));
}

} // namespace text
