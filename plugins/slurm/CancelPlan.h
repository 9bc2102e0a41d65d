#pragma once

#include <chrono>
#include <optional>

#include "slurm/Heartbeat.h"

namespace slurm {

/// The next step of a cancellation.
enum class CancelStep { Wait, AskCluster, TerminateSrun, KillSrun };

/// Decides how a job on the cluster is cancelled. First `scancel` asks, each second, because a name that is not yet
/// queued is not found. After the grace time `srun` is ended, which kills the job without asking. Pure logic.
class CancelPlan {
public:
    explicit CancelPlan(std::chrono::milliseconds grace) : graceTime(grace) {}

    /// Further calls change nothing.
    void Begin(Time now) {
        if (!begun) {
            begun = now;
        }
    }

    /// Ends `srun` without asking the job before: it has ended, or does not answer.
    void BeginWithoutGrace(Time now) {
        Begin(now);
        graceTime = std::chrono::milliseconds(0);
    }

    bool HasBegun() const { return begun.has_value(); }

    CancelStep Next(Time now) {
        constexpr std::chrono::seconds interval{1};
        constexpr std::chrono::seconds terminateTime{10};
        if (!begun || (next && now < *next)) {
            return CancelStep::Wait;
        }
        next = now + interval;
        if (now < *begun + graceTime) {
            return CancelStep::AskCluster;
        }
        return now < *begun + graceTime + terminateTime ? CancelStep::TerminateSrun : CancelStep::KillSrun;
    }

private:
    std::chrono::milliseconds graceTime;
    std::optional<Time> begun;
    std::optional<Time> next;
};

} // namespace slurm
