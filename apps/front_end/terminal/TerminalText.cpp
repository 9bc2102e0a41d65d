#include "front_end/terminal/TerminalText.h"

#include <utility>

#include "text/EscapeControls.h"
#include "text/Utf8.h"

namespace front_end {
namespace {

void AppendShown(char32_t character, std::string& shown) {
    if (character != U'\n' && character != U'\t' && text::IsControlOrBidi(character)) {
        shown += text::EscapedUtf8(std::wstring(1, static_cast<wchar_t>(character)));
    } else {
        text::AppendUtf8(shown, character);
    }
}

} // namespace

std::string TerminalText::Take(std::string_view bytes) {
    std::string shown;
    for (const char32_t character : pieces.Take(bytes)) {
        // A return before a line break is part of it.
        if (std::exchange(endedWithReturn, character == U'\r') && character != U'\n') {
            AppendShown(U'\r', shown);
        }
        if (!endedWithReturn) {
            AppendShown(character, shown);
        }
    }
    return shown;
}

} // namespace front_end
