#include "controller_cli/ControllerCli.h"

#include <algorithm>
#include <array>

#include "controller_cli/command_line/MovedOptions.h"
#include "controller_cli/short_options/ShortOptionCommands.h"
#include "front_end/commands/RunCommand.h"

namespace front_end {
namespace {

using Arguments = std::vector<std::wstring>;

ExitCode Help(CommandContext& context) {
    constexpr std::array sections = {L"Help/Usage", L"Help/Options", L"Help/Examples", L"Help/ExitCodes",
                                     L"Help/Environment"};
    std::wstring text;
    for (const wchar_t* const section : sections) {
        text += (text.empty() ? L"" : L"\n") + context.texts.Get(section) + L"\n";
    }
    context.console.Write(text);
    return ExitCode::Success;
}

bool Has(const Arguments& options, const wchar_t* option) {
    return std::find(options.begin(), options.end(), option) != options.end();
}

ExitCode RunCommandLine(CommandContext& context, const Arguments& arguments) {
    const Arguments options(arguments.begin(), std::find(arguments.begin(), arguments.end(), L"--"));
    if (Has(options, L"--help")) {
        return Help(context);
    }
    if (Has(options, L"--version")) {
        return RunCommand(context, {.kind = CommandKind::Version});
    }
    if (const auto moved = FindMovedOption(options)) {
        throw CommandFailure{ExitCode::Usage,
                             context.texts.Format(L"Usage/MovedOption", {moved->option, moved->replacement})};
    }
    return RunJobCommand(context, [&] { return RunLetterCommand(context, arguments); });
}

} // namespace

ExitCode RunControllerCli(CommandContext& context, const Arguments& arguments) {
    return RunGuarded(context, [&] { return RunCommandLine(context, arguments); });
}

} // namespace front_end
