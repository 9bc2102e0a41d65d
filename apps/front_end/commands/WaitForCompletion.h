#pragma once

#include "front_end/commands/CommandContext.h"
#include "front_end/commands/CommandFailure.h"
#include "front_end/connection/HostSession.h"

#include <string>
#include <vector>

namespace front_end {

/// Shows the progress of these jobs until all have ended, then their outcome (with JSON: only the outcome). `jobs` must
/// be taken from the session's last job list. Returns `JobFailed` unless all succeeded; a job that is deleted before
/// its end has not succeeded.
ExitCode WaitForCompletion(CommandContext& context, HostSession& session, const std::vector<ListedJob>& jobs,
                           bool asJson);

} // namespace front_end
