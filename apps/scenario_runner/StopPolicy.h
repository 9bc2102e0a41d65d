#pragma once

#include <chrono>
#include <cstdint>
#include <optional>

namespace scenario_runner {

/// Why a run ended.
enum class RunExitReason : std::int32_t { Exited, StopRequested, TimeLimit, HostEnded };

/// The next step of the supervisor.
enum class RunStep : std::int32_t { Wait, RequestStop, KillTree };

struct RunLimits {
    /// Nothing: no limit.
    std::optional<std::chrono::milliseconds> timeLimit;
    /// Time between asking the scenario to stop and killing it.
    std::chrono::milliseconds graceTime{0};
};

/// Decides when a running scenario is asked to stop and when it is killed. Pure logic: it gets events and the time, and
/// has no side effects.
class StopPolicy {
public:
    using Time = std::chrono::steady_clock::time_point;

    StopPolicy(const RunLimits& limits, Time start);

    /// The scenario's own process has ended: the processes it left are killed.
    RunStep OnScenarioEnded();
    /// The host has ended: no one needs the scenario's result any more.
    RunStep OnHostEnded();
    /// The user requests a stop; further requests change nothing.
    RunStep OnStopRequested(Time now);
    /// Only time has passed.
    RunStep OnTime(Time now);

    /// When `OnTime` must be called next; nothing: never.
    std::optional<Time> Deadline() const { return deadline; }
    /// True once the scenario was asked to stop.
    bool IsStopping() const { return ending != RunExitReason::Exited; }
    /// Current reason; final once `KillTree` was returned.
    RunExitReason Ending() const { return ending; }

private:
    RunStep Stop(RunExitReason reason, Time now);

    std::chrono::milliseconds graceTime;
    std::optional<Time> deadline;
    RunExitReason ending = RunExitReason::Exited;
};

} // namespace scenario_runner
