#pragma once

#include "CommonControllerLib/JobRecords.h"
#include "controller_cli/CommandContext.h"

#include <string>
#include <vector>

namespace controller_cli {

/// The jobs that a person names by number or id, each once, in the order named. Throws `CommandFailure` when there is
/// no such job.
std::vector<JobListInfo> SelectJobs(const CommandContext& context, const std::vector<JobListInfo>& jobs,
                                    const std::vector<std::wstring>& names);

std::vector<std::wstring> IdsOf(const std::vector<JobListInfo>& jobs);

} // namespace controller_cli
