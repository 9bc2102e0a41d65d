#pragma once

#include <string>

#include "platform/ProcessTree.h"
#include "platform/StopSignal.h"
#include "platform/Waiting.h"
#include "scenario_runner/RunnerPlan.h"

namespace scenario_runner {

/// Watches over a running scenario: tells the plan what happens, and does what the plan says, until no process of the
/// scenario is left.
class Supervision {
public:
    /// `host` may be null: nobody whose end would matter.
    Supervision(platform::ProcessTree& tree, void* host, const std::wstring& workDir,
                const platform::StopSignal& stopSignal);

    /// Returns why the run ended.
    RunEnding Run(RunnerPlan plan);

private:
    void WaitForNews(const RunnerPlan& plan);
    RunStep Look(RunnerPlan& plan);
    bool IsStopRequested() const;
    void AskToStop();

    platform::ProcessTree& tree;
    void* host;
    std::wstring killFile;
    platform::FolderWatch watch;
    const platform::StopSignal& stopSignal;
};

} // namespace scenario_runner
