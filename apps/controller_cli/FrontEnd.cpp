#include "controller_cli/FrontEnd.h"

#include <array>

#include "controller_cli/command_line/LongOptions.h"
#include "controller_cli/short_options/ShortOptionCommands.h"
#include "front_end/commands/RunCommand.h"

namespace front_end {
namespace {

ExitCode Help(CommandContext& context) {
    constexpr std::array sections = {L"Help/Usage",    L"Help/Commands",  L"Help/Options",    L"Help/Letters",
                                     L"Help/Examples", L"Help/ExitCodes", L"Help/Environment"};
    std::wstring text;
    for (const wchar_t* const section : sections) {
        text += (text.empty() ? L"" : L"\n") + context.texts.Get(section) + L"\n";
    }
    context.console.Write(text);
    return ExitCode::Success;
}

ExitCode RunCommandLine(CommandContext& context, const std::vector<std::wstring>& arguments) {
    if (!HasLongOptions(arguments)) {
        return RunJobCommand(context, [&] { return RunLetterCommand(context, arguments); });
    }
    const Command command = ParseLongCommand(arguments);
    return command.kind == CommandKind::Help ? Help(context) : RunCommand(context, command);
}

} // namespace

ExitCode RunFrontEnd(CommandContext& context, const std::vector<std::wstring>& arguments) {
    return RunGuarded(context, [&] { return RunCommandLine(context, arguments); });
}

} // namespace front_end
