#pragma once

#include "controller_cli/commands/CommandContext.h"
#include "controller_cli/commands/CommandFailure.h"

#include <string>
#include <vector>

namespace controller_cli {

/// Executes one command line, without the program name. Errors go to the console's error output.
ExitCode RunFrontEnd(CommandContext& context, const std::vector<std::wstring>& arguments);

} // namespace controller_cli
