#include "cadjobs/Cadjobs.h"

#include "cadjobs/command_line/Parser.h"
#include "front_end/commands/RunCommand.h"

namespace front_end {
namespace {

ExitCode RunCommandLine(CommandContext& context, const std::vector<std::wstring>& arguments) {
    const ParsedCommandLine line = ParseSubcommand(context.texts, arguments);
    if (line.command.kind != CommandKind::Help) {
        return RunCommand(context, line.command);
    }
    context.console.Write(line.help);
    return ExitCode::Success;
}

} // namespace

ExitCode RunCadjobs(CommandContext& context, const std::vector<std::wstring>& arguments) {
    return RunGuarded(context, [&] { return RunCommandLine(context, arguments); });
}

} // namespace front_end
