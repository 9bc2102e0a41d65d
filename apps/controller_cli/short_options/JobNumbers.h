#pragma once

#include "front_end/commands/CommandContext.h"
#include "front_end/connection/HostConnection.h"

#include <string>
#include <vector>

namespace front_end {

/// Converts job numbers and ids from the command line to job numbers, in the given order. Blanks around a name are
/// ignored, and so are blank names. A number is kept even if no such job exists. Asks the host for its job list only if
/// a name may be an id. Throws `CommandFailure` for a name that is neither, and like `HostSession`.
std::vector<std::wstring> JobNumbers(CommandContext& context, Start start, const std::vector<std::wstring>& typed);

} // namespace front_end
