#pragma once

#include <string>
#include <vector>

#include "platform/ProcessTree.h"
#include "platform/StopSignal.h"
#include "platform/Waiting.h"
#include "scenario_runner/RunnerPlan.h"

namespace scenario_runner {

/// Watches over a running scenario: tells the plan what happens, and does what the plan says, until no process of the
/// scenario is left.
class Supervision {
public:
    /// `owners`: the processes whose end ends the run. They and all else outlive the supervision.
    Supervision(platform::ProcessTree& tree, const std::vector<void*>& owners, const std::wstring& workDir,
                const platform::StopSignal& stopSignal);

    /// Returns why the run ended.
    RunEnding Run(RunnerPlan plan);

private:
    void WaitForNews(const RunnerPlan& plan);
    RunStep Look(RunnerPlan& plan);
    RunStep OnScenarioEnded(RunnerPlan& plan) const;
    bool HasLostOwner() const;
    bool IsStopRequested() const;
    void AskToStop();

    platform::ProcessTree& tree;
    const std::vector<void*>& owners;
    std::wstring killFile;
    platform::FolderWatch watch;
    const platform::StopSignal& stopSignal;
};

} // namespace scenario_runner
