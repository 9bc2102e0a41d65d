#include "scenario_runner/RunResult.h"

#include <algorithm>

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "formats/ResultFile.h"
#include "platform/files/NativePath.h"
#include "platform/processes/Process.h"

namespace scenario_runner {
namespace {

using run_protocol::FailedResult;
using run_protocol::RunScenarioResult;

/// The code of the runner's own messages that name no failure.
constexpr int informationCode = 0;

bool IsSuccessCode(const RunFacts& facts) {
    return facts.exitCode &&
           std::count(facts.successExitCodes.begin(), facts.successExitCodes.end(), *facts.exitCode) > 0;
}

std::wstring HowItEnded(const RunFacts& facts) {
    const std::wstring how =
        facts.exitCode ? L"The scenario ended with " + platform::ExitCodeText(*facts.exitCode) : L"The scenario ended";
    return how + (facts.hasUnusableResult ? L" and wrote a result that cannot be read." : L" and wrote no result.");
}

/// Adds the API problem if the output names the API, as interpreters do when they do not find it.
std::wstring WhyItFailed(const RunFacts& facts) {
    const bool isForWantOfApi =
        !facts.apiProblem.empty() && facts.lastOutput.find(L"controller_scenario") != std::wstring::npos;
    return HowItEnded(facts) + (isForWantOfApi ? L" " + facts.apiProblem : L"");
}

void AddLastOutput(const RunFacts& facts, RunScenarioResult& result) {
    if (!facts.lastOutput.empty()) {
        result.messages.emplace_back(informationCode, L"The last lines of its output:\n" + facts.lastOutput);
    }
}

RunScenarioResult ResultOfExitCode(const RunFacts& facts) {
    if (IsSuccessCode(facts) && !facts.hasUnusableResult) {
        return {facts.jobId, true, {{informationCode, HowItEnded(facts)}}, {}};
    }
    RunScenarioResult result = FailedResult(facts.jobId, WhyItFailed(facts));
    AddLastOutput(facts, result);
    return result;
}

/// The scenario's own messages follow.
RunScenarioResult ResultOfLimit(const RunFacts& facts, const std::wstring& reason) {
    RunScenarioResult result = FailedResult(facts.jobId, L"The scenario was stopped because " + reason);
    if (!facts.ownResult) {
        AddLastOutput(facts, result);
        return result;
    }
    const auto& own = *facts.ownResult;
    result.messages.insert(result.messages.end(), own.messages.begin(), own.messages.end());
    result.outputFiles = own.outputFiles;
    return result;
}

} // namespace

std::optional<RunScenarioResult> ResultOf(const RunFacts& facts) {
    if (facts.ending == RunExitReason::HostEnded) {
        return std::nullopt;
    }
    if (facts.ending == RunExitReason::TimeLimit) {
        return ResultOfLimit(facts, L"it ran longer than its time limit of " + std::to_wstring(facts.timeLimitSeconds) +
                                        L" s.");
    }
    if (facts.ending == RunExitReason::StopRequested && !facts.stopReason.empty()) {
        return ResultOfLimit(facts, facts.stopReason);
    }
    if (facts.ownResult) {
        return std::nullopt;
    }
    if (facts.exceededMemoryMiB > 0) {
        return ResultOfLimit(facts, L"it used more memory than its limit of " +
                                        std::to_wstring(facts.exceededMemoryMiB) + L" MiB.");
    }
    return facts.ending == RunExitReason::StopRequested
               ? FailedResult(facts.jobId, L"The scenario was stopped because it was asked to.")
               : ResultOfExitCode(facts);
}

std::optional<RunScenarioResult> ReadOwnResult(const std::wstring& workDir) {
    RunScenarioResult result;
    const std::wstring path = platform::ResolveAgainst(workDir, run_protocol::resultFileName);
    if (!run_protocol::ResultExists(workDir) ||
        !ControllerCSWrapper::ParseRunScenarioResult(path, result.succeeded, result.messages, result.outputFiles)) {
        return std::nullopt;
    }
    return result;
}

} // namespace scenario_runner
