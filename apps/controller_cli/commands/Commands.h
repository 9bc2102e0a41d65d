#pragma once

#include "controller_cli/command_line/LongOptions.h"
#include "controller_cli/commands/CommandContext.h"
#include "controller_cli/commands/CommandFailure.h"
#include "controller_cli/connection/HostConnection.h"

/// The long commands. Each writes its results to the console, and throws `CommandFailure` if it cannot continue.
namespace controller_cli::commands {

ExitCode List(CommandContext& context, const LongCommand& command);
/// Runs until it is interrupted; returns success.
ExitCode Watch(CommandContext& context, const LongCommand& command);
ExitCode Run(CommandContext& context, const LongCommand& command);
ExitCode Wait(CommandContext& context, const LongCommand& command);
ExitCode Cancel(CommandContext& context, const LongCommand& command);
ExitCode CancelAll(CommandContext& context, const LongCommand& command);
ExitCode Delete(CommandContext& context, const LongCommand& command);
/// Enqueues new jobs with what the named ones were made of; "failed" names all that have failed.
ExitCode Again(CommandContext& context, const LongCommand& command);
/// Deletes the ended jobs of an age or of certain states.
ExitCode Clean(CommandContext& context, const LongCommand& command);
// Change jobs that wait.
ExitCode Edit(CommandContext& context, const LongCommand& command);
ExitCode Hold(CommandContext& context, const LongCommand& command);
ExitCode Release(CommandContext& context, const LongCommand& command);
// Keep further jobs from starting, and let them start again.
ExitCode Pause(CommandContext& context, const LongCommand& command);
ExitCode Resume(CommandContext& context, const LongCommand& command);
ExitCode Log(CommandContext& context, const LongCommand& command);
ExitCode Scenarios(CommandContext& context, const LongCommand& command);
ExitCode ParameterSets(CommandContext& context, const LongCommand& command);
ExitCode StopHost(CommandContext& context, const LongCommand& command);
/// Same if the settings are unusable, for the reason in `problem`: the built-in ones may belong to another host. Ends
/// the only host that was started with this settings file.
ExitCode StopHostWithoutSettings(CommandContext& context, const std::wstring& problem);

/// Whether a command may start a host.
inline Start StartOf(const LongCommand& command) {
    return command.clientOnly ? Start::Never : Start::WhenNoneRuns;
}

} // namespace controller_cli::commands
