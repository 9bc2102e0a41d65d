#include "front_end/terminal/TerminalText.h"

#include <algorithm>
#include <cstdint>

#include "text/CodeUnits.h"
#include "text/EscapeControls.h"
#include "text/Utf8.h"

namespace front_end {
namespace {

/// True if the text begins with an incomplete character.
bool IsBeginning(std::string_view text) {
    const auto first = static_cast<unsigned char>(text[0]);
    return text == "\r" || (text::Utf8Length(first) > text.size() &&
                            std::all_of(text.begin() + 1, text.end(), text::IsUtf8Continuation));
}

void AppendShown(std::uint32_t character, std::string& shown) {
    if (character != '\n' && character != '\t' && text::IsControlOrBidi(character)) {
        shown += text::EscapedUtf8(std::wstring(1, static_cast<wchar_t>(character)));
    } else {
        text::AppendUtf8(shown, text::IsSurrogate(character) ? text::replacementCharacter : character);
    }
}

} // namespace

std::string TerminalText::Take(std::string_view bytes) {
    kept += bytes;
    std::string_view text = kept;
    std::string shown;
    while (!text.empty() && !IsBeginning(text)) {
        const text::CodePoint sequence = text::TakeUtf8<text::Surrogates::Allowed>(text);
        if (!text.starts_with("\r\n")) {
            AppendShown(sequence.length == 0 ? text::replacementCharacter : sequence.value, shown);
        }
        text.remove_prefix(std::max<std::size_t>(sequence.length, 1));
    }
    kept.erase(0, kept.size() - text.size());
    return shown;
}

} // namespace front_end
