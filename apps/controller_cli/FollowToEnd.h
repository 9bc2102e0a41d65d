#pragma once

#include "controller_cli/CommandContext.h"
#include "controller_cli/CommandFailure.h"
#include "controller_cli/HostSession.h"

#include <string>
#include <vector>

namespace controller_cli {

/// Shows how these jobs get on until all have ended, then their outcome (as JSON: only that). `JobFailed` unless all
/// have succeeded.
ExitCode FollowToEnd(CommandContext& context, HostSession& session, const std::vector<std::wstring>& jobIds,
                     bool asJson);

} // namespace controller_cli
