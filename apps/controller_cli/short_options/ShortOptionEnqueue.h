#pragma once

#include "controller_cli/short_options/ShortOptionOutput.h"
#include "controller_cli/short_options/ShortOptionSession.h"
#include "formats/Scheduling.h"
#include "front_end/commands/CommandContext.h"
#include "front_end/commands/CommandFailure.h"

#include <string>
#include <vector>

namespace front_end {

/// Sends the requests of a jobs file one after another. Writes the output lines of each request as soon as it is
/// answered, so that none are lost if the front end is killed. Reports rejections with their reasons on standard error.
/// If the host disconnects, the remaining requests fail without being sent.
ExitCode EnqueueRequests(CommandContext& context, ShortOptionSession& session, const std::wstring& jobsFile,
                         std::vector<ScheduledRequest>& requests, ShortOptionOutput& output);

} // namespace front_end
