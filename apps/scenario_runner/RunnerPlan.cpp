#include "scenario_runner/RunnerPlan.h"

namespace scenario_runner {

RunnerPlan::RunnerPlan(const RunLimits& limits, Time start) : graceTime(limits.graceTime) {
    if (limits.timeLimit) {
        deadline = start + *limits.timeLimit;
    }
}

RunStep RunnerPlan::OnScenarioEnded() {
    deadline.reset();
    return RunStep::EndTree;
}

RunStep RunnerPlan::OnHostEnded() {
    ending = RunEnding::HostEnded;
    deadline.reset();
    return RunStep::EndTree;
}

RunStep RunnerPlan::OnStopRequested(Time now) {
    return IsStopping() ? OnTime(now) : Stop(RunEnding::StopRequested, now);
}

RunStep RunnerPlan::OnTime(Time now) {
    if (!deadline || now < *deadline) {
        return RunStep::Wait;
    }
    return IsStopping() ? RunStep::EndTree : Stop(RunEnding::TimeLimit, now);
}

RunStep RunnerPlan::Stop(RunEnding reason, Time now) {
    ending = reason;
    deadline = now + graceTime;
    return RunStep::AskToStop;
}

} // namespace scenario_runner
