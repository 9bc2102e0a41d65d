#include "scenario_runner/Supervision.h"

#include <algorithm>

#include "companion/RunProtocol.h"
#include "platform/FileSystem.h"
#include "platform/NativePath.h"

namespace scenario_runner {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

/// For file systems that tell nobody of changes, network folders most of all.
constexpr milliseconds slowLook{2000};

milliseconds TimeUntil(const std::optional<RunnerPlan::Time>& deadline) {
    if (!deadline) {
        return slowLook;
    }
    const auto remaining = std::chrono::ceil<milliseconds>(*deadline - steady_clock::now());
    return std::clamp(remaining, milliseconds(0), slowLook);
}

} // namespace

Supervision::Supervision(platform::ProcessTree& watchedTree, const std::vector<void*>& watchedOwners,
                         const std::wstring& workDir, const platform::StopSignal& signal)
    : tree(watchedTree), owners(watchedOwners), killFile(platform::ResolveAgainst(workDir, run_protocol::killFileName)),
      watch(workDir), stopSignal(signal) {}

RunEnding Supervision::Run(RunnerPlan plan) {
    // The first look: somebody may have asked before the watch was there.
    RunStep step = Look(plan);
    while (step != RunStep::EndTree) {
        if (step == RunStep::AskToStop) {
            AskToStop();
        }
        WaitForNews(plan);
        step = Look(plan);
    }
    tree.End();
    return plan.Ending();
}

void Supervision::WaitForNews(const RunnerPlan& plan) {
    std::vector<void*> handles = {tree.Root()};
    handles.insert(handles.end(), owners.begin(), owners.end());
    if (tree.Ended() != nullptr) {
        handles.push_back(tree.Ended());
    }
    if (!plan.IsStopping()) {
        handles.push_back(stopSignal.Handle());
        if (watch.Handle() != nullptr) {
            handles.push_back(watch.Handle());
        }
    }
    platform::WaitForAny(handles, TimeUntil(plan.Deadline()));
}

RunStep Supervision::Look(RunnerPlan& plan) {
    watch.Rearm();
    tree.Tidy();
    if (!platform::IsProcessRunning(tree.Root())) {
        return OnScenarioEnded(plan);
    }
    if (HasLostOwner()) {
        return plan.OnHostEnded();
    }
    return IsStopRequested() ? plan.OnStopRequested(steady_clock::now()) : plan.OnTime(steady_clock::now());
}

RunStep Supervision::OnScenarioEnded(RunnerPlan& plan) const {
    // A scenario may heed a request sooner than it is seen here.
    if (IsStopRequested()) {
        plan.OnStopRequested(steady_clock::now());
    }
    return plan.OnScenarioEnded();
}

bool Supervision::HasLostOwner() const {
    return !std::all_of(owners.begin(), owners.end(), platform::IsProcessRunning);
}

bool Supervision::IsStopRequested() const {
    return !platform::IsProcessRunning(stopSignal.Handle()) || platform::Exists(killFile) || platform::IsLink(killFile);
}

void Supervision::AskToStop() {
    // Scenarios look for the file; whoever asked in another way, or the time limit, did not make it.
    if (!platform::Exists(killFile)) {
        // Without the file there is still the signal, and the end after the time of grace.
        (void)platform::CreateEmptyFile(killFile);
    }
    tree.AskToStop();
}

} // namespace scenario_runner
