#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "platform/processes/StopSignal.h"
#include "slurm/AttemptFiles.h"
#include "slurm/CancelPlan.h"
#include "slurm/ClusterCommands.h"
#include "slurm/Heartbeat.h"
#include "slurm/SrunProcess.h"
#include "slurm/WaiterProgram.h"

namespace slurm {

/// One attempt to run a job on the cluster.
struct WaiterJob {
    std::wstring jobId;
    std::wstring workDir;
    std::wstring name;
    /// What `srun` runs on the node.
    std::vector<std::wstring> command;
    SlurmOptions options;
    /// The time between the request to cancel and the kill.
    std::chrono::milliseconds grace{0};
    /// How long nothing may be seen of the process on the node.
    std::chrono::milliseconds lostAfter{0};
};

/// Runs one job on the cluster, and ends when it has ended there. Believes in an end only if the process on the node
/// has written it: `srun` reports success also for a lost node. Not thread-safe.
class Waiter {
public:
    /// `host` is the process whose end ends the job; may be null. The arguments must outlive this object.
    Waiter(const WaiterJob& job, void* host, const platform::StopSignal& stopSignal);

    WaiterExit Run();

private:
    bool AwaitEarlierAttempts();
    WaiterExit StartAndWatch();
    void WaitForEvent(std::chrono::milliseconds longest);
    void Look(Time now);
    void LookAtNode(Time now);
    void CancelFurther(Time now);
    bool IsStopRequested() const;
    bool IsHostGone() const;
    void NoteRequests(Time now);
    void AwaitEnd();
    WaiterExit Conclude();
    WaiterExit ConcludeWithoutEnd();
    std::wstring WhatIsKnown() const;
    WaiterExit Fail(WaiterExit code, const std::wstring& problem) const;

    const WaiterJob& job;
    void* host;
    const platform::StopSignal& stopSignal;
    AttemptFiles files;
    SrunProcess srun;
    CancelPlan cancelPlan;
    RepeatedCancel cancel;
    /// What the node reports.
    Heartbeat beat;
    std::optional<NodeEnd> end;
    std::optional<Time> endSeen;
    Time nextLease;
    std::uint64_t leaseCount = 0;
    bool wasAsked = false;
    bool isHostGone = false;
    bool isLost = false;
};

} // namespace slurm
