#pragma once

#include "controller_cli/CommandContext.h"
#include "controller_cli/CommandFailure.h"
#include "controller_cli/ShortOptionOutput.h"
#include "controller_cli/ShortOptionSession.h"

#include <string>
#include <vector>

namespace controller_cli {

/// Sends the requests of a jobs file one after another. The lines of each are written as soon as it is answered, so
/// that a front end that is killed loses none; what is refused, and why, goes to standard error. Once the host has gone
/// the rest fails unsent.
ExitCode EnqueueRequests(CommandContext& context, ShortOptionSession& session, const std::wstring& jobsFile,
                         std::vector<EnqueueJobsInfo>& requests, ShortOptionOutput& output);

} // namespace controller_cli
