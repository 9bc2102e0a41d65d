#pragma once

#include "cadjobs/scenarios/ScratchDirectory.h"
#include "front_end/commands/CommandContext.h"

#include <string>
#include <vector>

namespace front_end {

/// What is run, once, without a host.
struct DryRunRequest {
    std::wstring scenarioPath;
    std::vector<std::wstring> inputFiles;
    std::wstring runArgument;
    /// Exists.
    std::wstring outputDirectory;
};

struct DryRunResult {
    bool hasSucceeded = false;
    std::vector<std::wstring> messages;
    std::vector<std::wstring> outputFiles;
    /// The end of what the scenario has printed, in UTF-8.
    std::string log;
};

/// Runs a scenario as jobs are run: in processes of its own, with the interpreters of the settings, in a work directory
/// below `scratch`. Ctrl-C asks it to stop; it ends with this process at the latest. Throws `CommandFailure` if it
/// cannot be started, or was interrupted.
DryRunResult RunOnce(const CommandContext& context, const ScratchDirectory& scratch, const DryRunRequest& request);

} // namespace front_end
