#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "platform/processes/ProcessTree.h"
#include "platform/processes/StopSignal.h"
#include "platform/processes/Waiting.h"
#include "scenario_runner/StopPolicy.h"

namespace scenario_runner {

/// Watches over a running scenario: tells the plan what happens, and does what the plan says, until no process of the
/// scenario is left.
class Supervisor {
public:
    /// A run that ends within this time gets no directory watch: on Linux, letting go of one costs 5 to 18 ms, more
    /// than all else in a short job. Until then the file that asks to stop is looked for by time.
    static constexpr std::chrono::milliseconds timeWithoutWatch{2000};

    /// `owners`: the processes whose end ends the run. They and all else outlive the supervision.
    Supervisor(platform::ProcessTree& tree, const std::vector<void*>& owners, const std::wstring& workDir,
               const platform::StopSignal& stopSignal, std::chrono::milliseconds watchAfter = timeWithoutWatch);

    /// Returns why the run ended.
    RunEnding Run(StopPolicy plan);

private:
    void WaitForNews(const StopPolicy& plan);
    std::chrono::milliseconds LongestWait(const StopPolicy& plan) const;
    void WatchDirectory(const StopPolicy& plan);
    RunStep Look(StopPolicy& plan);
    RunStep OnScenarioEnded(StopPolicy& plan) const;
    bool HasLostOwner() const;
    bool IsStopRequested() const;
    void AskToStop();

    platform::ProcessTree& tree;
    const std::vector<void*>& owners;
    std::wstring directory;
    std::wstring killFile;
    std::chrono::steady_clock::time_point watchFrom;
    std::optional<platform::DirectoryWatch> watch;
    const platform::StopSignal& stopSignal;
};

} // namespace scenario_runner
