#pragma once

#include "front_end/commands/CommandContext.h"
#include "front_end/commands/CommandFailure.h"
#include "front_end/output/StateJson.h"

#include <vector>

namespace front_end {

/// Writes the results of checks, a line each or as JSON. Returns `JobFailed` if something is wrong.
ExitCode ReportChecks(CommandContext& context, const std::vector<CheckResult>& results, bool asJson);

} // namespace front_end
