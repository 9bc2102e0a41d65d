#pragma once

#include "front_end/commands/Command.h"
#include "front_end/commands/CommandContext.h"
#include "front_end/commands/CommandFailure.h"

#include <functional>

/// What the programs around the commands share.
namespace front_end {

/// Runs a command that concerns jobs. Reports quarantined job lists before the command, and those that its host
/// quarantines after it. Throws `CommandFailure` if the settings are invalid.
ExitCode RunJobCommand(CommandContext& context, const std::function<ExitCode()>& command);

/// Does what a command's options say about colours and the log file.
void ApplyCommonOptions(CommandContext& context, const Command& command);

/// Runs a parsed command of this library, with the log file that it names. `Help` and other kinds are the program's.
ExitCode RunCommand(CommandContext& context, const Command& command);

/// Runs the whole of a program. Each failure becomes a message on the error output and an exit code.
ExitCode RunGuarded(CommandContext& context, const std::function<ExitCode()>& command);

} // namespace front_end
