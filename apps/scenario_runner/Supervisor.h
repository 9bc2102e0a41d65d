#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "platform/processes/ProcessTree.h"
#include "platform/processes/StopSignal.h"
#include "platform/processes/Waiting.h"
#include "scenario_runner/OutputCapture.h"
#include "scenario_runner/StopPolicy.h"

namespace scenario_runner {

/// Supervises a running scenario: reports events to the plan and executes its decisions, until all processes of the
/// scenario have ended. Meanwhile it lets the scenario's output be carried to the log.
class Supervisor {
public:
    /// A run that ends within this time gets no directory watch: on Linux, closing a watch takes 5 to 18 ms, longer
    /// than everything else in a short job. Until then the stop file is polled.
    static constexpr std::chrono::milliseconds timeWithoutWatch{2000};

    /// `owners` are the processes whose end ends the run; `output` may be null. All arguments must outlive this object.
    Supervisor(platform::ProcessTree& tree, const std::vector<void*>& owners, const std::wstring& workDir,
               const platform::StopSignal& stopSignal, OutputCapture* output,
               std::chrono::milliseconds watchAfter = timeWithoutWatch);

    /// Returns why the run ended.
    RunExitReason Run(StopPolicy plan);

private:
    void WaitForEvent(const StopPolicy& plan);
    std::chrono::milliseconds LongestWait(const StopPolicy& plan) const;
    void WatchDirectory(const StopPolicy& plan);
    RunStep Poll(StopPolicy& plan);
    RunStep OnScenarioEnded(StopPolicy& plan) const;
    void RequestStop();

    platform::ProcessTree& tree;
    const std::vector<void*>& owners;
    std::wstring directory;
    std::wstring killFile;
    std::chrono::steady_clock::time_point watchFrom;
    std::optional<platform::DirectoryWatch> watch;
    const platform::StopSignal& stopSignal;
    OutputCapture* output;
};

} // namespace scenario_runner
