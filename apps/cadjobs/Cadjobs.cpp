#include "cadjobs/Cadjobs.h"

#include "cadjobs/command_line/Parser.h"
#include "cadjobs/completion/Candidates.h"
#include "cadjobs/completion/CompletionScripts.h"
#include "front_end/commands/RunCommand.h"

namespace front_end {
namespace {

ExitCode WriteScript(CommandContext& context, const std::wstring& shell) {
    const char* const script = CompletionScript(shell);
    if (script == nullptr) {
        throw UsageProblem{L"Usage/Shell", shell};
    }
    context.console.WriteBytes(script);
    return ExitCode::Success;
}

ExitCode RunCommandLine(CommandContext& context, const std::vector<std::wstring>& arguments) {
    const ParsedCommandLine line = ParseSubcommand(context.texts, arguments);
    switch (line.command.kind) {
    case CommandKind::Help:
        context.console.Write(line.help);
        return ExitCode::Success;
    case CommandKind::Completion:
        return WriteScript(context, line.command.operands.front());
    case CommandKind::Complete:
        WriteCandidates(context, line.command.operands);
        return ExitCode::Success;
    default:
        return RunCommand(context, line.command);
    }
}

} // namespace

ExitCode RunCadjobs(CommandContext& context, const std::vector<std::wstring>& arguments) {
    return RunGuarded(context, [&] { return RunCommandLine(context, arguments); });
}

} // namespace front_end
