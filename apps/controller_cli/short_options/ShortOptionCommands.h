#pragma once

#include "front_end/commands/CommandContext.h"
#include "front_end/commands/CommandFailure.h"

#include <string>
#include <vector>

namespace front_end {

/// Executes a command line of one-letter options; throws `CommandFailure`.
ExitCode RunLetterCommand(CommandContext& context, const std::vector<std::wstring>& arguments);

} // namespace front_end
