#pragma once

#include "front_end/commands/Command.h"

#include <string>
#include <vector>

namespace front_end {

/// True if the command line has long options; arguments after "--" do not count.
bool HasLongOptions(const std::vector<std::wstring>& arguments);

/// Parses a command line with long options; throws `UsageProblem`. With `--help`, all other arguments are ignored.
/// Arguments after "--" are names, inputs or ids of the command, even if they begin with "-".
Command ParseLongCommand(const std::vector<std::wstring>& arguments);

} // namespace front_end
