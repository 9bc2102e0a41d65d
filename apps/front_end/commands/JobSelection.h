#pragma once

#include "formats/Scheduling.h"
#include "front_end/commands/CommandContext.h"

#include <string>
#include <vector>

namespace front_end {

/// Selects jobs by number or id, each once, in the given order. Throws `CommandFailure` if there is no such job.
std::vector<ListedJob> SelectJobs(const CommandContext& context, const std::vector<ListedJob>& jobs,
                                  const std::vector<std::wstring>& names);

std::vector<std::wstring> IdsOf(const std::vector<ListedJob>& jobs);

} // namespace front_end
