#pragma once

#include "controller_cli/commands/CommandContext.h"
#include "controller_cli/commands/CommandFailure.h"

#include <string>
#include <vector>

namespace controller_cli {

/// Executes a command line of one-letter options; throws `CommandFailure`.
ExitCode RunLetterCommand(CommandContext& context, const std::vector<std::wstring>& arguments);

} // namespace controller_cli
