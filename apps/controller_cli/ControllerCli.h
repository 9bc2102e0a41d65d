#pragma once

#include "front_end/commands/CommandContext.h"
#include "front_end/commands/CommandFailure.h"

#include <string>
#include <vector>

namespace front_end {

/// Executes one command line of `controller_cli`, without the program name. Errors go to the console's error output.
ExitCode RunControllerCli(CommandContext& context, const std::vector<std::wstring>& arguments);

} // namespace front_end
