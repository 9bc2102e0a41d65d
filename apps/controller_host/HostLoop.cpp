#include "controller_host/HostLoop.h"

#include <optional>

#include "platform/Waiting.h"

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

/// How often a running job's progress file is looked at, so that a change is on every screen within 250 ms.
constexpr milliseconds progressInterval{200};

} // namespace

void HostLoop::Run(milliseconds patience) {
    while (!answers.EndWasRequested() && WaitForWork() == Wake::Work) {
        AnswerRequests();
        LookAtJobs();
        StartNextJob();
    }
    EndJobs(patience);
}

HostLoop::Wake HostLoop::WaitForWork() {
    std::vector<void*> handles = engine.ActiveProcesses();
    const bool watching = !handles.empty() || engine.HasActiveJobs();
    handles.insert(handles.begin(), {stop, inbox.Arrived()});
    const auto timeout = watching ? std::optional(progressInterval) : std::nullopt;
    return platform::WaitForAny(handles, timeout) == std::size_t{0} ? Wake::Stop : Wake::Work;
}

void HostLoop::AnswerRequests() {
    for (const Request& request : inbox.TakeAll()) {
        answers.Answer(request);
    }
}

void HostLoop::LookAtJobs() {
    std::vector<JobStatusInfo> changed;
    if (engine.CheckUpdate(changed)) {
        answers.TellAll(changed);
    }
}

void HostLoop::StartNextJob() {
    std::vector<JobStatusInfo> updated;
    if (engine.ExecuteJob(nullptr, updated)) {
        answers.TellAll(updated);
    }
}

void HostLoop::EndJobs(milliseconds patience) {
    std::vector<JobStatusInfo> cancelled;
    engine.CancelAllJobs(cancelled, false);
    answers.TellAll(cancelled);
    const auto deadline = steady_clock::now() + patience;
    while (engine.HasActiveJobs() && steady_clock::now() < deadline) {
        const auto left = std::chrono::duration_cast<milliseconds>(deadline - steady_clock::now());
        const std::vector<void*> processes = engine.ActiveProcesses();
        if (!processes.empty() && !platform::WaitForAny(processes, std::max(left, milliseconds{0}))) {
            break;
        }
        LookAtJobs();
    }
    engine.Terminate();
}
