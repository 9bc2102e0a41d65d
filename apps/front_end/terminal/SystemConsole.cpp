#include "front_end/terminal/SystemConsole.h"

#include <algorithm>
#include <string>

#include "front_end/terminal/Links.h"
#include "platform/system/Environment.h"
#include "platform/terminal/Console.h"
#include "text/Text.h"

namespace front_end {
namespace {

/// An answer as it is compared: in lower case, without blanks around it.
std::wstring Answer(const std::string& line) {
    std::wstring answer = text::FromUtf8(line);
    answer.erase(0, answer.find_first_not_of(L" \t\r\n"));
    answer.erase(answer.find_last_not_of(L" \t\r\n") + 1);
    std::transform(answer.begin(), answer.end(), answer.begin(), [](wchar_t letter) {
        return letter >= L'A' && letter <= L'Z' ? static_cast<wchar_t>(letter - L'A' + L'a') : letter;
    });
    return answer;
}

} // namespace

void SystemConsole::Write(std::wstring_view text) {
    WriteBytes(text::ToUtf8(text));
}

void SystemConsole::WriteBytes(std::string_view bytes) {
    if (const platform::Error result = platform::WriteOutput(bytes); !result) {
        throw OutputFailure{result};
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
    if (chosenColours) {
        return *chosenColours;
    }
    return IsTerminal() && platform::GetEnvironment(L"NO_COLOR").value_or(std::wstring()).empty();
}

bool SystemConsole::HasLinks() const {
    return IsTerminal() && ShowsLinks(platform::GetEnvironment);
}

std::optional<std::wstring> SystemConsole::Ask(std::wstring_view question) {
    if (!IsTerminal() || !platform::IsInputTerminal()) {
        return std::nullopt;
    }
    Write(question);
    return Answer(platform::ReadInputLine());
}

platform::Error SystemConsole::ReadInput(std::size_t most, std::string& bytes) {
    return platform::ReadWholeInput(most, bytes);
}

std::size_t SystemConsole::Width() const {
    return platform::TerminalWidth();
}

std::size_t SystemConsole::Height() const {
    return platform::TerminalHeight();
}

} // namespace front_end
