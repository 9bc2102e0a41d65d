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
    file.Open(path, true);
}

void TextOutput::Write(std::string_view lines) {
    if (file.IsOpen()) {
        file.Write(WithLineEndsOfSystem(lines));
    }
}
