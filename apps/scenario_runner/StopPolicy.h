#pragma once

#include <chrono>
#include <cstdint>
#include <optional>

namespace scenario_runner {

/// Why a run came to its end.
enum class RunEnding : std::int32_t { OnItsOwn, StopRequested, TimeLimit, HostEnded };

/// What is to be done next.
enum class RunStep : std::int32_t { Wait, AskToStop, EndTree };

struct RunLimits {
    /// None: as long as it takes.
    std::optional<std::chrono::milliseconds> timeLimit;
    /// Between asking the scenario to stop and ending it by force.
    std::chrono::milliseconds graceTime{0};
};

/// Decides when a running scenario is asked to stop and when it is ended. It is told what happens and what time it is,
/// and does nothing itself.
class StopPolicy {
public:
    using Time = std::chrono::steady_clock::time_point;

    StopPolicy(const RunLimits& limits, Time start);

    /// The scenario's own process has ended: what it left behind ends too.
    RunStep OnScenarioEnded();
    /// The host has ended by whatever means: nobody waits for the scenario any more.
    RunStep OnHostEnded();
    /// The user wants the scenario to stop; said again, it changes nothing.
    RunStep OnStopRequested(Time now);
    /// Nothing happened, but time passed.
    RunStep OnTime(Time now);

    /// When `OnTime` has something to decide; none: never.
    std::optional<Time> Deadline() const { return deadline; }
    /// True once the scenario was asked to stop.
    bool IsStopping() const { return ending != RunEnding::OnItsOwn; }
    /// Current reason; final once EndTree was returned.
    RunEnding Ending() const { return ending; }

private:
    RunStep Stop(RunEnding reason, Time now);

    std::chrono::milliseconds graceTime;
    std::optional<Time> deadline;
    RunEnding ending = RunEnding::OnItsOwn;
};

} // namespace scenario_runner
