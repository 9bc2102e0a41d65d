#include "controller_cli/SystemConsole.h"

#include "platform/Console.h"
#include "platform/Environment.h"
#include "platform/Text.h"

namespace controller_cli {

void SystemConsole::Write(std::wstring_view text) {
    platform::WriteOutput(platform::ToUtf8(text));
}

void SystemConsole::WriteBytes(std::string_view bytes) {
    platform::WriteOutput(bytes);
}

void SystemConsole::WriteError(std::wstring_view text) {
    platform::WriteErrorOutput(platform::ToUtf8(text));
}

bool SystemConsole::IsTerminal() const {
    return platform::IsOutputTerminal();
}

bool SystemConsole::HasColours() const {
    return IsTerminal() && platform::GetEnvironment(L"NO_COLOR").value_or(L"").empty();
}

std::size_t SystemConsole::Width() const {
    return platform::TerminalWidth();
}

std::size_t SystemConsole::Height() const {
    return platform::TerminalHeight();
}

} // namespace controller_cli
