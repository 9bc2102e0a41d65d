#include "cadjobs/Cadjobs.h"

#include "cadjobs/command_line/Parser.h"
#include "cadjobs/completion/Candidates.h"
#include "cadjobs/completion/CompletionScripts.h"
#include "cadjobs/scenarios/ScenarioCommands.h"
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

using Operation = ExitCode (*)(CommandContext&, const Command&);

/// Null for what the library of commands has.
Operation OwnOperation(CommandKind kind) {
    switch (kind) {
    case CommandKind::NewScenario:
        return commands::NewScenario;
    case CommandKind::PackScenario:
        return commands::PackScenario;
    case CommandKind::CheckScenario:
        return commands::CheckScenario;
    default:
        return nullptr;
    }
}

ExitCode RunSubcommand(CommandContext& context, const Command& command) {
    const Operation own = OwnOperation(command.kind);
    if (own == nullptr) {
        return RunCommand(context, command);
    }
    ApplyCommonOptions(context, command);
    return own(context, command);
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
        return RunSubcommand(context, line.command);
    }
}

} // namespace

ExitCode RunCadjobs(CommandContext& context, const std::vector<std::wstring>& arguments) {
    return RunGuarded(context, [&] { return RunCommandLine(context, arguments); });
}

} // namespace front_end
