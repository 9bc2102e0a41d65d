#pragma once

#include "controller_cli/CommandContext.h"
#include "controller_cli/CommandFailure.h"

#include <string>
#include <vector>

namespace controller_cli {

/// Carries out one command line, the program's own name left out. What goes wrong is told on the console's error
/// output.
ExitCode RunFrontEnd(CommandContext& context, const std::vector<std::wstring>& arguments);

} // namespace controller_cli
