#include "cli/TextOutput.h"

#include "platform/LineEnd.h"

namespace {

std::string WithLineEndsOfSystem(std::string_view lines) {
    std::string text;
    text.reserve(lines.size());
    for (const char character : lines) {
        if (character == '\n') {
            text += platform::lineEnd;
        } else {
            text += character;
        }
    }
    return text;
}

} // namespace

TextOutput::TextOutput(const std::wstring& path) {
    // What could not be opened is seen at each write.
    (void)file.Open(path, true);
}

void TextOutput::Write(std::string_view lines) {
    if (file.IsOpen()) {
        // Promised: lost in silence.
        (void)file.Write(WithLineEndsOfSystem(lines));
    }
}
