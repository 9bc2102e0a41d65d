#pragma once

#include "CommonControllerLib/JobRecords.h"
#include "controller_cli/commands/CommandContext.h"

#include <string>
#include <vector>

namespace controller_cli {

/// Selects jobs by number or id, each once, in the given order. Throws `CommandFailure` if there is no such job.
std::vector<JobListInfo> SelectJobs(const CommandContext& context, const std::vector<JobListInfo>& jobs,
                                    const std::vector<std::wstring>& names);

std::vector<std::wstring> IdsOf(const std::vector<JobListInfo>& jobs);

} // namespace controller_cli
