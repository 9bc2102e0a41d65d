#include "front_end/terminal/SystemConsole.h"

#include "platform/system/Environment.h"
#include "platform/terminal/Console.h"
#include "text/Text.h"

namespace front_end {

void SystemConsole::Write(std::wstring_view text) {
    WriteBytes(text::ToUtf8(text));
}

void SystemConsole::WriteBytes(std::string_view bytes) {
    if (const platform::Error error = platform::WriteOutput(bytes)) {
        throw OutputFailure{error};
    }
}

void SystemConsole::WriteError(std::wstring_view text) {
    platform::WriteErrorOutput(text::ToUtf8(text));
}

void* SystemConsole::ReaderGone() const {
    return platform::OutputReaderGone();
}

bool SystemConsole::IsTerminal() const {
    return platform::IsOutputTerminal();
}

bool SystemConsole::HasColours() const {
    return IsTerminal() && platform::GetEnvironment(L"NO_COLOR").value_or(std::wstring()).empty();
}

std::size_t SystemConsole::Width() const {
    return platform::TerminalWidth();
}

std::size_t SystemConsole::Height() const {
    return platform::TerminalHeight();
}

} // namespace front_end
