#include "scenario_runner/StopPolicy.h"

namespace scenario_runner {

StopPolicy::StopPolicy(const RunLimits& limits, Time start) : graceTime(limits.graceTime) {
    if (limits.timeLimit) {
        deadline = start + *limits.timeLimit;
    }
}

RunStep StopPolicy::OnScenarioEnded() {
    deadline.reset();
    return RunStep::EndTree;
}

RunStep StopPolicy::OnHostEnded() {
    ending = RunEnding::HostEnded;
    deadline.reset();
    return RunStep::EndTree;
}

RunStep StopPolicy::OnStopRequested(Time now) {
    return IsStopping() ? OnTime(now) : Stop(RunEnding::StopRequested, now);
}

RunStep StopPolicy::OnTime(Time now) {
    if (!deadline || now < *deadline) {
        return RunStep::Wait;
    }
    return IsStopping() ? RunStep::EndTree : Stop(RunEnding::TimeLimit, now);
}

RunStep StopPolicy::Stop(RunEnding reason, Time now) {
    ending = reason;
    deadline = now + graceTime;
    return RunStep::AskToStop;
}

} // namespace scenario_runner
