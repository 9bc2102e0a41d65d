#include "slurm/Waiter.h"

#include "formats/ResultFile.h"
#include "formats/RunProtocol.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "platform/processes/Process.h"
#include "platform/processes/Waiting.h"
#include "slurm/EarlierAttempts.h"

namespace slurm {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

/// Interval for files that another machine writes. A waiting job costs little, a running job is watched more closely.
constexpr milliseconds pendingInterval{2000};
constexpr milliseconds runningInterval{1000};
/// How long `srun` may take to notice the end of its job, and a file to become visible on this machine.
constexpr milliseconds longestDelay{10000};
constexpr milliseconds clusterTimeout{10000};

} // namespace

Waiter::Waiter(const WaiterJob& waitedJob, void* hostProcess, const platform::StopSignal& signal)
    : job(waitedJob), host(hostProcess), stopSignal(signal), files(job.workDir, job.name), cancelPlan(job.grace),
      cancel(job.name), beat(job.lostAfter) {}

WaiterExit Waiter::Run() {
    if (!AwaitEarlierAttempts()) {
        return Conclude();
    }
    files.RemoveOthers();
    return StartAndWatch();
}

/// False if the job is cancelled before, or cannot be run.
bool Waiter::AwaitEarlierAttempts() {
    EarlierAttempts earlier(files, job.lostAfter);
    if (!earlier.TakeLease()) {
        return false;
    }
    while (!earlier.AreOver(steady_clock::now())) {
        NoteRequests(steady_clock::now());
        if (cancelPlan.HasBegun()) {
            return false;
        }
        WaitForEvent(std::min(runningInterval, beat.Interval()));
    }
    return true;
}

WaiterExit Waiter::StartAndWatch() {
    const std::vector<std::wstring> arguments =
        SrunArguments(job.options, job.name, platform::ToNativeText(job.workDir), job.command);
    if (const platform::Error result = srun.Start(arguments); !result) {
        return Fail(WaiterExit::NotStarted,
                    L"The program srun cannot be started: " + result.Text() + L". Slurm's programs must be in PATH.");
    }
    while (srun.IsRunning()) {
        WaitForEvent(beat.HasBegun() || cancelPlan.HasBegun() ? std::min(runningInterval, beat.Interval())
                                                              : std::min(pendingInterval, job.lostAfter));
        Look(steady_clock::now());
    }
    AwaitEnd();
    return Conclude();
}

void Waiter::WaitForEvent(milliseconds longest) {
    std::vector<void*> handles;
    for (void* const handle : {srun.Handle(), srun.Readable()}) {
        if (handle != nullptr) {
            handles.push_back(handle);
        }
    }
    if (!cancelPlan.HasBegun()) {
        handles.push_back(stopSignal.Handle());
        if (host != nullptr) {
            handles.push_back(host);
        }
    }
    platform::WaitForAny(handles, longest);
}

void Waiter::Look(Time now) {
    srun.CarryOutput();
    NoteRequests(now);
    LookAtNode(now);
    CancelFurther(now);
}

void Waiter::LookAtNode(Time now) {
    beat.OnSeen(files.ReadBeat(), now);
    end = files.ReadEnd();
    if (beat.HasBegun() && now >= nextLease) {
        nextLease = now + beat.Interval();
        // The node waits for the next one.
        (void)files.WriteLease(++leaseCount);
    }
    if (end && !endSeen) {
        endSeen = now;
    }
    if (endSeen && now > *endSeen + std::min(longestDelay, job.lostAfter)) {
        cancelPlan.BeginWithoutGrace(now);
    }
    if (!end && beat.IsLost(now)) {
        isLost = true;
        cancelPlan.BeginWithoutGrace(now);
    }
}

void Waiter::CancelFurther(Time now) {
    switch (cancelPlan.Next(now)) {
    case CancelStep::Wait:
        return;
    case CancelStep::AskCluster:
        return cancel.Ask();
    case CancelStep::TerminateSrun:
        return srun.Terminate();
    case CancelStep::KillSrun:
        return srun.Kill();
    }
}

bool Waiter::IsStopRequested() const {
    return !platform::IsProcessRunning(stopSignal.Handle()) ||
           platform::Exists(platform::ResolveAgainst(job.workDir, run_protocol::killFileName));
}

bool Waiter::IsHostGone() const {
    return host != nullptr && !platform::IsProcessRunning(host);
}

void Waiter::NoteRequests(Time now) {
    isHostGone = isHostGone || IsHostGone();
    wasAsked = wasAsked || IsStopRequested();
    if (isHostGone || wasAsked) {
        cancelPlan.Begin(now);
    }
}

/// The file of the node may become visible later than the end of `srun`.
void Waiter::AwaitEnd() {
    constexpr milliseconds interval{100};
    srun.CarryOutput();
    const bool isOwed = platform::ExitCode(srun.Handle()) == 0 || beat.HasBegun();
    const auto deadline = steady_clock::now() + (isOwed ? std::min(longestDelay, job.lostAfter) : milliseconds(0));
    end = files.ReadEnd();
    while (!end && steady_clock::now() < deadline) {
        platform::WaitForAny({}, interval);
        end = files.ReadEnd();
    }
}

WaiterExit Waiter::Conclude() {
    if (srun.Handle() != nullptr) {
        // Slurm may still list the job as running, if its controller was away at the end.
        CancelJobs(job.name, clusterTimeout);
    }
    if (isHostGone) {
        return WaiterExit::HostEnded;
    }
    if (!end || !end->isWhole || !run_protocol::ResultExists(job.workDir)) {
        return ConcludeWithoutEnd();
    }
    // The host decides by the exit code of the runner whether a failed job is run again.
    return wasAsked ? WaiterExit::Done : static_cast<WaiterExit>(end->runnerExit);
}

/// Replaces a result of the scenario, because nobody has seen it through.
WaiterExit Waiter::ConcludeWithoutEnd() {
    if (wasAsked && !isLost) {
        return Fail(WaiterExit::Done, L"The job was cancelled on the cluster.");
    }
    if (srun.Handle() == nullptr) {
        return Fail(WaiterExit::NotStarted, L"The files of the job in the work directory " +
                                                platform::ToNativeText(job.workDir) + L" cannot be written.");
    }
    const std::int32_t code = platform::ExitCode(srun.Handle()).value_or(-1);
    if (code == static_cast<std::int32_t>(WaiterExit::NoWorkDirectory)) {
        return Fail(WaiterExit::NoWorkDirectory, L"The node does not have the job's work directory, " +
                                                     platform::ToNativeText(job.workDir) +
                                                     L": it must be on a file system that all nodes share.");
    }
    if (!beat.HasBegun() && files.ReadBeat().empty() && code != 0) {
        return Fail(WaiterExit::NotStarted,
                    L"The cluster did not run the job: srun ended with " + platform::ExitCodeText(code) + L".");
    }
    return Fail(WaiterExit::Lost, L"The job was lost on the cluster: " + WhatIsKnown());
}

std::wstring Waiter::WhatIsKnown() const {
    if (isLost) {
        return L"nothing was seen of it for " + std::to_wstring(job.lostAfter.count() / 1000) +
               L" s (setting \"slurm.lostAfterSeconds\").";
    }
    return L"srun ended with " + platform::ExitCodeText(platform::ExitCode(srun.Handle()).value_or(-1)) +
           L", but the node did not report the end of the scenario. The node or its connection may have failed.";
}

WaiterExit Waiter::Fail(WaiterExit code, const std::wstring& problem) const {
    const std::wstring lines = srun.LastLines();
    const std::wstring text = lines.empty() ? problem : problem + L"\nThe last lines of srun:\n" + lines;
    const auto result = run_protocol::FailedResult(job.jobId, text);
    return run_protocol::WriteResult(job.workDir, result) ? code : WaiterExit::NoResult;
}

} // namespace slurm
