#include "scenario_runner/StopPolicy.h"

namespace scenario_runner {

StopPolicy::StopPolicy(const RunLimits& limits, Time start) : graceTime(limits.graceTime) {
    if (limits.timeLimit) {
        deadline = start + *limits.timeLimit;
    }
}

RunStep StopPolicy::OnScenarioEnded() {
    deadline.reset();
    return RunStep::KillTree;
}

RunStep StopPolicy::OnHostEnded() {
    ending = RunExitReason::HostEnded;
    deadline.reset();
    return RunStep::KillTree;
}

RunStep StopPolicy::OnStopRequested(Time now) {
    return IsStopping() ? OnTime(now) : Stop(RunExitReason::StopRequested, now);
}

RunStep StopPolicy::OnTime(Time now) {
    if (!deadline || now < *deadline) {
        return RunStep::Wait;
    }
    return IsStopping() ? RunStep::KillTree : Stop(RunExitReason::TimeLimit, now);
}

RunStep StopPolicy::Stop(RunExitReason reason, Time now) {
    ending = reason;
    deadline = now + graceTime;
    return RunStep::RequestStop;
}

} // namespace scenario_runner
