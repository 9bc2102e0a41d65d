#pragma once

#include "controller_cli/CommandContext.h"
#include "controller_cli/CommandFailure.h"
#include "controller_cli/HostSession.h"

#include <string>
#include <vector>

namespace controller_cli {

/// Shows how these jobs get on until all have ended, then their outcome (as JSON: only that). `jobs`: as the session's
/// last job list has them. `JobFailed` unless all have succeeded; a job that is deleted before it ended has not.
ExitCode WaitForCompletion(CommandContext& context, HostSession& session, const std::vector<JobListInfo>& jobs,
                           bool asJson);

} // namespace controller_cli
