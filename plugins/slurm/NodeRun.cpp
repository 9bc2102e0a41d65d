#include "slurm/NodeRun.h"

#include "formats/ResultFile.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "platform/processes/ForeignProcess.h"
#include "platform/processes/Process.h"
#include "platform/processes/Waiting.h"
#include "platform/system/Environment.h"
#include "platform/terminal/Console.h"
#include "slurm/posix/BoundProgram.h"
#include "text/Text.h"

namespace slurm {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr milliseconds longestWait{1000};

/// Slurm forwards this to the waiter.
void Say(const std::wstring& text) {
    platform::WriteErrorOutput("slurm_waiter: " + text::ToUtf8(text) + "\n");
}

} // namespace

NodeRun::NodeRun(const NodeJob& nodeJob, const platform::StopSignal& signal)
    : job(nodeJob), stopSignal(signal), files(job.workDir, job.name), lease(job.lostAfter) {
    // Without a handle, the lease alone ends the attempt.
    (void)platform::OpenProcessById(ParentProcessNumber(), parent);
}

WaiterExit NodeRun::Run() {
    if (!IsInWorkDirectory()) {
        Say(L"on " + MachineName() + L" the current directory is " +
            platform::ToNativeText(platform::CurrentDirectory()) + L", not " + platform::ToNativeText(job.workDir));
        return WaiterExit::NoWorkDirectory;
    }
    const Time now = steady_clock::now();
    lease.Begin(now);
    // In this order: a later attempt takes the lease before it looks for a beat.
    if (!files.WriteBeat(0)) {
        Say(L"the work directory " + platform::ToNativeText(job.workDir) + L" cannot be written on " + MachineName());
        return WaiterExit::NoWorkDirectory;
    }
    return HoldsLease(now) ? StartAndWatch() : GiveUp();
}

/// Slurm uses another directory if the one of the job is missing. A local directory of the same name has no lease.
bool NodeRun::IsInWorkDirectory() const {
    const auto identity = platform::IdentityOf(job.workDir);
    return identity && identity == platform::IdentityOf(platform::CurrentDirectory()) && files.ReadLease();
}

bool NodeRun::HoldsLease(Time now) {
    const std::optional<Lease> seen = files.ReadLease();
    if (seen) {
        lease.OnSeen(seen->content, now);
    }
    return (!seen || seen->name == job.name) && !lease.IsLost(now);
}

WaiterExit NodeRun::StartAndWatch() {
    const platform::OwnedHandle self = platform::OpenSelf();
    platform::ProcessStart start;
    start.program = job.runner;
    start.arguments = {L"--work-dir", platform::ToNativeText(job.workDir),
                       L"--host",     platform::InheritedHandleText(self.Get()),
                       L"--settings", platform::ToNativeText(job.settingsFile)};
    start.currentDirectory = platform::ParentDirectory(job.runner);
    start.inherited = {self.Get()};
    NodeEnd end;
    if (const platform::Error started = tree.Start(start); !started) {
        const auto result = run_protocol::FailedResult(
            L"", L"The program that runs scenarios, " + platform::ToNativeText(job.runner) +
                     L", cannot be started on the node " + MachineName() + L": " + started.Text() +
                     L". It must be there under the same path as on this machine.");
        end.isWhole = run_protocol::WriteResult(job.workDir, result);
        end.runnerExit = static_cast<std::int32_t>(WaiterExit::NotStarted);
        return files.WriteEnd(end) ? WaiterExit::NotStarted : WaiterExit::NoResult;
    }
    while (platform::IsProcessRunning(tree.Root())) {
        if (!MayGoOn(steady_clock::now())) {
            return GiveUp();
        }
        WaitForEvent();
        tree.ReapChildren();
    }
    tree.Kill();
    end.runnerExit = tree.RootExitCode().value_or(static_cast<std::int32_t>(WaiterExit::NoResult));
    return files.WriteEnd(end) ? static_cast<WaiterExit>(end.runnerExit) : WaiterExit::NoResult;
}

bool NodeRun::MayGoOn(Time now) {
    if (now >= nextBeat) {
        nextBeat = now + lease.Interval();
        // The waiter waits for the next one.
        (void)files.WriteBeat(++beatCount);
    }
    if (!wasAsked && !platform::IsProcessRunning(stopSignal.Handle())) {
        wasAsked = true;
        platform::RequestTermination(tree.Root());
    }
    const bool hasParent = !parent || platform::IsProcessRunning(parent.Get());
    return hasParent && HoldsLease(now);
}

void NodeRun::WaitForEvent() {
    std::vector<void*> handles = {tree.Root()};
    for (void* const handle : {tree.ChildExited(), parent.Get(), wasAsked ? nullptr : stopSignal.Handle()}) {
        if (handle != nullptr) {
            handles.push_back(handle);
        }
    }
    platform::WaitForAny(handles, std::min(longestWait, lease.Interval()));
}

WaiterExit NodeRun::GiveUp() {
    tree.Kill();
    Say(L"the job was given up on " + MachineName() + L": its waiter, its lease or its step has gone");
    // Otherwise the next attempt waits longer.
    (void)files.WriteEnd({0, false});
    return WaiterExit::GivenUp;
}

} // namespace slurm
