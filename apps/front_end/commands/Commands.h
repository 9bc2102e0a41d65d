#pragma once

#include "front_end/commands/Command.h"
#include "front_end/commands/CommandContext.h"
#include "front_end/commands/CommandFailure.h"
#include "front_end/connection/HostConnection.h"

/// What the subcommands of `cadjobs` do. Each writes its results to the console, and throws `CommandFailure` if it
/// cannot continue.
namespace front_end::commands {

/// The state of host and queue and the jobs that matter now, in at most ten lines. Starts no host.
ExitCode Overview(CommandContext& context, const Command& command);
ExitCode List(CommandContext& context, const Command& command);
/// Everything that is known about jobs.
ExitCode Show(CommandContext& context, const Command& command);
/// Runs until it is interrupted; returns success.
ExitCode Watch(CommandContext& context, const Command& command);
ExitCode Run(CommandContext& context, const Command& command);
/// Enqueues the jobs of a jobs file.
ExitCode Add(CommandContext& context, const Command& command);
ExitCode Wait(CommandContext& context, const Command& command);
ExitCode Cancel(CommandContext& context, const Command& command);
ExitCode CancelAll(CommandContext& context, const Command& command);
ExitCode Delete(CommandContext& context, const Command& command);
/// Enqueues new jobs with what the named ones were made of; "failed" names all that have failed.
ExitCode Again(CommandContext& context, const Command& command);
/// Deletes the ended jobs of an age or of certain states.
ExitCode Clean(CommandContext& context, const Command& command);
// Change jobs that wait.
ExitCode Edit(CommandContext& context, const Command& command);
ExitCode Hold(CommandContext& context, const Command& command);
ExitCode Release(CommandContext& context, const Command& command);
// Keep further jobs from starting, and let them start again.
ExitCode Pause(CommandContext& context, const Command& command);
ExitCode Resume(CommandContext& context, const Command& command);
ExitCode Log(CommandContext& context, const Command& command);
ExitCode Scenarios(CommandContext& context, const Command& command);
ExitCode ParameterSets(CommandContext& context, const Command& command);
ExitCode StartHost(CommandContext& context, const Command& command);
/// `NoHost` if none runs.
ExitCode HostStatus(CommandContext& context, const Command& command);
/// Starts the server of the web page, or ends it.
ExitCode Web(CommandContext& context, const Command& command);
/// Checks settings, programs, modules, directories, permissions, versions and host, and says what to do. `JobFailed` if
/// something is wrong. Starts no host.
ExitCode Doctor(CommandContext& context, const Command& command);
/// Writes the path of the settings file that is looked for, whether it exists or not.
ExitCode SettingsPath(CommandContext& context, const Command& command);
/// Writes the settings in force in the layout of a settings file.
ExitCode ShowSettings(CommandContext& context, const Command& command);
/// Checks the named settings file, or that in force. `JobFailed` if it cannot be used or has unknown members.
ExitCode CheckSettings(CommandContext& context, const Command& command);
/// Checks a file with the texts of a language. `JobFailed` if it cannot be used, or texts are missing or wrong.
ExitCode CheckLanguage(CommandContext& context, const Command& command);
ExitCode StopHost(CommandContext& context, const Command& command);
/// Same if the settings are unusable, for the reason in `problem`: the built-in ones may belong to another host. Ends
/// the only host that was started with this settings file.
ExitCode StopHostWithoutSettings(CommandContext& context, const std::wstring& problem);

/// Whether a command may start a host.
inline Start StartOf(const Command& command) {
    return command.clientOnly ? Start::Never : Start::WhenNoneRuns;
}

} // namespace front_end::commands
