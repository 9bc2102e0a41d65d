#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "formats/RunProtocol.h"
#include "scenario_runner/StopPolicy.h"

namespace scenario_runner {

/// What is known of a run that has ended.
struct RunFacts {
    std::wstring jobId;
    RunEnding ending = RunEnding::OnItsOwn;
    /// Of the scenario's own process, when it can be told.
    std::optional<std::int32_t> exitCode;
    std::vector<std::int32_t> successExitCodes;
    std::int32_t timeLimitSeconds = 0;
    /// What the scenario wrote itself, when it can be read.
    std::optional<run_protocol::RunScenarioResult> ownResult;
    /// The scenario wrote something that cannot be read.
    bool hasUnusableResult = false;
    /// The end of what it printed.
    std::wstring lastOutput;
    /// Why it could not load the scenario API; empty when it could.
    std::wstring apiProblem = {};
};

/// The result to write in the scenario's place; none when its own is to stay, or when nobody is left to read one.
[[nodiscard]] std::optional<run_protocol::RunScenarioResult> ResultOf(const RunFacts& facts);

/// The result of a scenario that could not be started.
run_protocol::RunScenarioResult FailedResult(const std::wstring& jobId, const std::wstring& problem);

} // namespace scenario_runner
