#include "controller_cli/TerminalText.h"

#include <algorithm>
#include <cstdint>

#include "text/EscapeControls.h"
#include "text/Text.h"
#include "text/Utf8Sequence.h"

namespace controller_cli {
namespace {

constexpr std::uint32_t replacement = 0xFFFD;

/// True when more bytes decide what the text begins with.
bool IsBeginning(std::string_view text) {
    const auto first = static_cast<unsigned char>(text[0]);
    const auto isContinuation = [](char byte) { return text::IsUtf8Continuation(static_cast<unsigned char>(byte)); };
    return text == "\r" ||
           (text::Utf8Length(first) > text.size() && std::all_of(text.begin() + 1, text.end(), isContinuation));
}

void AppendShown(std::uint32_t character, std::string& shown) {
    if (character != '\n' && character != '\t' && text::IsControlOrBidi(character)) {
        shown += text::ToUtf8(text::Escaped(std::wstring(1, static_cast<wchar_t>(character))));
    } else {
        text::AppendUtf8(shown, text::IsSurrogate(character) ? replacement : character);
    }
}

} // namespace

std::string TerminalText::Take(std::string_view bytes) {
    kept += bytes;
    std::string_view text = kept;
    std::string shown;
    while (!text.empty() && !IsBeginning(text)) {
        const text::Utf8Sequence sequence = text::TakeUtf8(text);
        if (!text.starts_with("\r\n")) {
            AppendShown(sequence.length == 0 ? replacement : sequence.value, shown);
        }
        text.remove_prefix(std::max<std::size_t>(sequence.length, 1));
    }
    kept.erase(0, kept.size() - text.size());
    return shown;
}

} // namespace controller_cli
