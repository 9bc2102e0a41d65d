#pragma once

#include "front_end/commands/Command.h"
#include "front_end/commands/CommandContext.h"
#include "front_end/commands/CommandFailure.h"

/// The subcommands for authors of scenarios. None needs a host. Each throws `CommandFailure` if it cannot continue, and
/// `UsageProblem` for a wrong argument.
namespace front_end::commands {

/// Makes a directory with a runnable scenario from the template of a language.
ExitCode NewScenario(CommandContext& context, const Command& command);
/// Makes a package (".esa") of a directory.
ExitCode PackScenario(CommandContext& context, const Command& command);
/// Checks description and inputs of a script, a package or the directory of one, and runs it once. `JobFailed` if
/// something is wrong.
ExitCode CheckScenario(CommandContext& context, const Command& command);

} // namespace front_end::commands
