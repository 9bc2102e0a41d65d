#include "platform/terminal/Console.h"

#include <array>
#include <iostream>
#include <streambuf>
#include <string>

#include "platform/system/NeverDestroyed.h"
#include "text/EscapeControls.h"
#include "text/Text.h"

namespace platform {
namespace {

/// Keeps a line break at the end of the text.
std::wstring AsOneLine(std::wstring text) {
    const bool endsLine = text.ends_with(L'\n');
    text.resize(text.size() - (endsLine ? 1 : 0));
    return text::Escaped(text) + (endsLine ? L"\n" : L"");
}

/// Unbuffered: each inserted text is written in one piece.
class WideOutput final : public std::wstreambuf {
protected:
    std::streamsize xsputn(const wchar_t* text, std::streamsize count) override {
        // The error is ignored: a failed stream would lose later output, too.
        (void)WriteOutput(text::ToUtf8(AsOneLine({text, static_cast<std::size_t>(count)})));
        return count;
    }

    int_type overflow(int_type character) override {
        if (!traits_type::eq_int_type(character, traits_type::eof())) {
            const wchar_t single = traits_type::to_char_type(character);
            xsputn(&single, 1);
        }
        return traits_type::not_eof(character);
    }
};

} // namespace

void MakeWideOutputUtf8() {
    // Never destroyed: the stream is flushed after static destruction.
    static WideOutput& output = MakeNeverDestroyed<WideOutput>();
    std::wcout.rdbuf(&output);
}

std::string ReadInputLine() {
    constexpr std::size_t longestLine = 4096;
    std::string line;
    char letter = '\0';
    std::size_t count = 0;
    while (line.size() < longestLine && ReadInput(&letter, 1, count) && count == 1 && letter != '\n') {
        line += letter;
    }
    return line;
}

Error ReadWholeInput(std::size_t most, std::string& bytes) {
    bytes.clear();
    std::array<char, 65536> block{};
    for (;;) {
        std::size_t count = 0;
        if (const Error result = ReadInput(block.data(), block.size(), count); !result) {
            return result;
        }
        if (count == 0) {
            return {};
        }
        if (count > most - bytes.size()) {
            return {ErrorKind::TooLarge};
        }
        bytes.append(block.data(), count);
    }
}

} // namespace platform
