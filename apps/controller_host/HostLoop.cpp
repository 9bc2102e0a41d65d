#include "controller_host/HostLoop.h"

#include <algorithm>
#include <cstdint>
#include <optional>

#include "controller_host/OrphanCleanup.h"
#include "fault_points/FaultPoint.h"
#include "formats/JobListFile.h"
#include "platform/processes/Waiting.h"
#include "platform/system/Clock.h"
#include "platform/system/Environment.h"

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

/// Interval for reading a running job's progress file; front ends show a change within 250 ms.
constexpr milliseconds progressInterval{200};
/// Interval for flushing the states of running jobs, for retrying a failed write of the job list, for example on a full
/// disk, and the time without a change after which the journal is folded.
constexpr milliseconds listInterval{1000};
/// The clock may be set while a job waits for its time.
constexpr std::int64_t longestTimeWait = 60;

} // namespace

void HostLoop::Run(milliseconds timeout) {
    while (!answers.EndWasRequested() && WaitForWork() == Wake::Work) {
        AnswerRequests();
        LookAtJobs();
        if (!answers.EndWasRequested()) {
            StartJobs();
        }
        ReportStranded();
        hooks.OnTurnEnded();
        KeepList();
    }
    EndJobs(timeout);
}

HostLoop::Wake HostLoop::WaitForWork() {
    std::vector<void*> handles = engine.ActiveProcesses();
    const bool watching = !handles.empty() || engine.HasActiveJobs();
    handles.insert(handles.begin(), {stop, queue.Readable()});
    return platform::WaitForAny(handles, LongestWait(watching)) == std::size_t{0} ? Wake::Stop : Wake::Work;
}

std::optional<milliseconds> HostLoop::LongestWait(bool watching) const {
    if (watching) {
        return progressInterval;
    }
    if (engine.HasChanges()) {
        return listInterval;
    }
    const auto start = engine.NextStartTime();
    return start ? std::optional<milliseconds>(
                       std::chrono::seconds(std::clamp<std::int64_t>(*start - platform::Now(), 0, longestTimeWait)))
                 : std::nullopt;
}

void HostLoop::AnswerRequests() {
    for (const Request& request : queue.TakeAll()) {
        answers.Answer(request);
    }
    answers.SendAll();
}

void HostLoop::LookAtJobs() {
    std::vector<JobStatusInfo> changed;
    if (engine.CheckUpdate(changed)) {
        KillOrphans(changed);
        TellOfJobs(changed);
    }
}

void HostLoop::TellOfJobs(const std::vector<JobStatusInfo>& changed) {
    engine.ExplainFailures(changed);
    answers.Broadcast(changed);
    hooks.OnJobsChanged(changed);
}

/// Each start is written to the list and broadcast before the next one.
void HostLoop::StartJobs() {
    std::vector<JobStatusInfo> updated;
    while (engine.ExecuteJob(nullptr, updated)) {
        TellOfJobs(updated);
        updated.clear();
    }
}

void HostLoop::ReportStranded() {
    const std::vector<JobStatusInfo> stranded = engine.TakeStranded();
    if (!stranded.empty()) {
        TellOfJobs(stranded);
    }
}

void HostLoop::KeepList() {
    const auto now = steady_clock::now();
    if (now < nextListWrite) {
        return;
    }
    nextListWrite = now + listInterval;
    engine.FlushJobList();
    const bool isIdle = !engine.HasActiveJobs() && now - engine.LastChange() >= listInterval;
    if (isIdle || job_list_file::IsUnwritten()) {
        engine.FoldJournal();
        platform::ReleaseFreeMemory();
    }
}

void HostLoop::EndJobs(milliseconds timeout) {
    std::vector<JobStatusInfo> cancelled;
    engine.StopAtEnd(cancelled);
    answers.Broadcast(cancelled);
    fault_points::ReachFaultPoint(fault_points::FaultPoint::JobsCancelledAtEnd);
    const auto deadline = steady_clock::now() + timeout;
    while (engine.HasActiveJobs() && steady_clock::now() < deadline) {
        const auto left = std::chrono::duration_cast<milliseconds>(deadline - steady_clock::now());
        const std::vector<void*> processes = engine.ActiveProcesses();
        if (!processes.empty() && !platform::WaitForAny(processes, std::max(left, milliseconds{0}))) {
            break;
        }
        LookAtJobs();
    }
    engine.Terminate();
    engine.EndJournal();
}
