#pragma once

#include "controller_cli/CommandContext.h"
#include "controller_cli/HostConnection.h"

#include <string>
#include <vector>

namespace controller_cli {

/// The numbers of the jobs that a person names by number or id, in the order named; blanks around a name do not count,
/// and names that are blank are left out. A number stays, whether there is such a job or not. The host is asked for its
/// list of jobs only where a name may be an id. Throws `CommandFailure` for a name that is neither, and as
/// `HostSession` does.
std::vector<std::wstring> JobNumbers(CommandContext& context, Start start, const std::vector<std::wstring>& typed);

} // namespace controller_cli
