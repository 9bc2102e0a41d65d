#pragma once

#include "controller_cli/commands/CommandContext.h"
#include "controller_cli/commands/CommandFailure.h"
#include "controller_cli/connection/HostSession.h"

#include <string>
#include <vector>

namespace controller_cli {

/// Shows the progress of these jobs until all have ended, then their outcome (with JSON: only the outcome). `jobs` must
/// be taken from the session's last job list. Returns `JobFailed` unless all succeeded; a job that is deleted before
/// its end has not succeeded.
ExitCode WaitForCompletion(CommandContext& context, HostSession& session, const std::vector<ListedJob>& jobs,
                           bool asJson);

} // namespace controller_cli
