#pragma once

#include <chrono>
#include <string>

#include "platform/processes/ProcessTree.h"
#include "platform/processes/StopSignal.h"
#include "slurm/AttemptFiles.h"
#include "slurm/Heartbeat.h"
#include "slurm/WaiterProgram.h"

namespace slurm {

struct NodeJob {
    std::wstring name;
    std::wstring workDir;
    /// The program `scenario_runner`.
    std::wstring runner;
    std::wstring settingsFile;
    /// How long the attempt runs without a sign of its waiter.
    std::chrono::milliseconds lostAfter{0};
};

/// Runs a scenario on a node of the cluster, under the runner that also supervises scenarios on the machine of the
/// host. Shows the waiter that it lives, and writes the end. Ends all its processes if it loses the lease, or if the
/// process of Slurm that started it ends. Not thread-safe; at most one in a process.
class NodeRun {
public:
    NodeRun(const NodeJob& job, const platform::StopSignal& stopSignal);

    WaiterExit Run();

private:
    bool IsInWorkDirectory() const;
    /// False if another attempt has the lease.
    bool HoldsLease(Time now);
    WaiterExit StartAndWatch();
    bool MayGoOn(Time now);
    void WaitForEvent();
    WaiterExit GiveUp();

    const NodeJob& job;
    const platform::StopSignal& stopSignal;
    AttemptFiles files;
    Heartbeat lease;
    platform::OwnedHandle parent;
    platform::ProcessTree tree;
    Time nextBeat;
    std::uint64_t beatCount = 0;
    bool wasAsked = false;
};

} // namespace slurm
