#include "scenario_runner/Supervisor.h"

#include <algorithm>

#include "formats/RunProtocol.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "scenario_runner/StopRequests.h"

namespace scenario_runner {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

/// Polling interval for file systems without change notifications, mainly network directories.
constexpr milliseconds slowLook{2000};
/// Polling interval before the directory watch exists. On Linux most stop requests also come as a signal, which ends
/// the wait at once.
constexpr milliseconds quickLook{100};

milliseconds TimeUntil(const std::optional<StopPolicy::Time>& deadline, milliseconds longest) {
    if (!deadline) {
        return longest;
    }
    const auto remaining = std::chrono::ceil<milliseconds>(*deadline - steady_clock::now());
    return std::clamp(remaining, milliseconds(0), longest);
}

} // namespace

Supervisor::Supervisor(platform::ProcessTree& watchedTree, const std::vector<void*>& watchedOwners,
                       const std::wstring& workDir, const platform::StopSignal& signal, OutputCapture* capturedOutput,
                       milliseconds watchAfter)
    : tree(watchedTree), owners(watchedOwners), directory(workDir),
      killFile(platform::ResolveAgainst(workDir, run_protocol::killFileName)),
      watchFrom(steady_clock::now() + watchAfter), stopSignal(signal), output(capturedOutput) {}

RunExitReason Supervisor::Run(StopPolicy plan) {
    // The first check: a stop may have been requested before the watch existed.
    RunStep step = Poll(plan);
    while (step != RunStep::KillTree) {
        if (step == RunStep::RequestStop) {
            RequestStop();
        }
        WaitForEvent(plan);
        step = Poll(plan);
    }
    tree.Kill();
    return plan.Ending();
}

void Supervisor::WaitForEvent(const StopPolicy& plan) {
    std::vector<void*> handles = {tree.Root()};
    handles.insert(handles.end(), owners.begin(), owners.end());
    if (tree.ChildExited() != nullptr) {
        handles.push_back(tree.ChildExited());
    }
    if (output != nullptr && output->Readable() != nullptr) {
        handles.push_back(output->Readable());
    }
    if (!plan.IsStopping()) {
        handles.push_back(stopSignal.Handle());
        if (watch && watch->Handle() != nullptr) {
            handles.push_back(watch->Handle());
        }
    }
    platform::WaitForAny(handles, TimeUntil(plan.Deadline(), LongestWait(plan)));
}

milliseconds Supervisor::LongestWait(const StopPolicy& plan) const {
    return watch || plan.IsStopping() ? slowLook : quickLook;
}

void Supervisor::WatchDirectory(const StopPolicy& plan) {
    if (watch) {
        watch->Rearm();
    } else if (!plan.IsStopping() && steady_clock::now() >= watchFrom) {
        watch.emplace(directory);
    }
}

RunStep Supervisor::Poll(StopPolicy& plan) {
    tree.ReapChildren();
    if (!platform::IsProcessRunning(tree.Root())) {
        return OnScenarioEnded(plan);
    }
    if (output != nullptr) {
        output->CarryIfReadable();
    }
    if (HasLostOwner(owners)) {
        return plan.OnHostEnded();
    }
    // Rearms the watch before checking the file: later changes end the next wait.
    WatchDirectory(plan);
    return IsStopRequested(stopSignal, killFile) ? plan.OnStopRequested(steady_clock::now())
                                                 : plan.OnTime(steady_clock::now());
}

RunStep Supervisor::OnScenarioEnded(StopPolicy& plan) const {
    // A scenario may obey a stop request before the supervisor sees it.
    if (IsStopRequested(stopSignal, killFile)) {
        plan.OnStopRequested(steady_clock::now());
    }
    return plan.OnScenarioEnded();
}

void Supervisor::RequestStop() {
    // Scenarios poll for this file. A stop by signal or time limit has not created it.
    if (!platform::Exists(killFile)) {
        // On failure, the signal and the kill after the grace time remain.
        (void)platform::CreateEmptyFile(killFile);
    }
    tree.RequestStop();
}

} // namespace scenario_runner
