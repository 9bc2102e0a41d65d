#include "frontend/TextOutput.h"

#include "platform/files/FileSystem.h"

platform::Error TextOutput::Open(const std::wstring& path) {
    return file.OpenForAppending(path, true);
}

platform::Error TextOutput::Write(std::string_view lines) {
    return file.Write(WithLineEndsOfSystem(lines));
}

std::string TextOutput::WithLineEndsOfSystem(std::string_view lines) {
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
