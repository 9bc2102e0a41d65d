#pragma once

#include "front_end/commands/Command.h"
#include "front_end/commands/CommandContext.h"
#include "front_end/jobs/JobConditions.h"

namespace front_end {

/// The conditions that a command line sets for jobs.
struct JobFilter : JobConditions {
    /// Throws `UsageProblem` for a wrong value.
    JobFilter(const CommandContext& context, const Command& command);
};

} // namespace front_end
