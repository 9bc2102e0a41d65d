#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "formats/RunProtocol.h"
#include "scenario_runner/StopPolicy.h"

namespace scenario_runner {

/// The facts about a finished run.
struct RunFacts {
    std::wstring jobId;
    RunExitReason ending = RunExitReason::Exited;
    /// Exit code of the scenario's own process, if available.
    std::optional<std::int32_t> exitCode;
    std::vector<std::int32_t> successExitCodes;
    std::int32_t timeLimitSeconds = 0;
    /// The memory limit for which its processes were killed; 0: for none. Units: MiB.
    std::int64_t exceededMemoryMiB = 0;
    /// The result that the scenario wrote, if it can be parsed.
    std::optional<run_protocol::RunScenarioResult> ownResult;
    /// The scenario wrote a result that cannot be parsed.
    bool hasUnusableResult = false;
    /// The end of its output.
    std::wstring lastOutput;
    /// Why the host has stopped it; empty if it has not, or gave no reason.
    std::wstring stopReason = {};
    /// Why it could not load the scenario API; empty if it could.
    std::wstring apiProblem = {};
};

/// The result to write instead of the scenario's own. Nothing if the scenario's result must be kept, or if the host has
/// ended.
[[nodiscard]] std::optional<run_protocol::RunScenarioResult> ResultOf(const RunFacts& facts);

/// The result that the scenario wrote into the work directory; nothing if it is missing or invalid.
[[nodiscard]] std::optional<run_protocol::RunScenarioResult> ReadOwnResult(const std::wstring& workDir);

} // namespace scenario_runner
