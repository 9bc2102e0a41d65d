#include "scenario_runner/StopPolicy.h"

#include <gtest/gtest.h>

using scenario_runner::RunExitReason;
using scenario_runner::RunLimits;
using scenario_runner::RunStep;
using scenario_runner::StopPolicy;
using std::chrono::seconds;

namespace {

/// Seconds since the start of the scenario.
StopPolicy::Time At(int second) {
    return StopPolicy::Time(seconds(1000 + second));
}

StopPolicy Plan(std::optional<seconds> timeLimit) {
    RunLimits limits;
    limits.timeLimit = timeLimit;
    limits.graceTime = seconds(5);
    return {limits, At(0)};
}

} // namespace

TEST(StopPolicyTest, WithoutATimeLimitAScenarioRunsAsLongAsItTakes) {
    StopPolicy plan = Plan(std::nullopt);
    EXPECT_EQ(plan.Deadline(), std::nullopt);
    EXPECT_EQ(plan.OnTime(At(1'000'000)), RunStep::Wait);
    EXPECT_FALSE(plan.IsStopping());
    EXPECT_EQ(plan.OnScenarioEnded(), RunStep::KillTree);
    EXPECT_EQ(plan.Ending(), RunExitReason::Exited);
}

TEST(StopPolicyTest, ARequestToStopGivesTheScenarioTheGraceTime) {
    StopPolicy plan = Plan(std::nullopt);
    EXPECT_EQ(plan.OnStopRequested(At(10)), RunStep::RequestStop);
    EXPECT_TRUE(plan.IsStopping());
    EXPECT_EQ(plan.Deadline(), At(15));
    EXPECT_EQ(plan.OnTime(At(14)), RunStep::Wait);
    EXPECT_EQ(plan.OnTime(At(15)), RunStep::KillTree);
    EXPECT_EQ(plan.Ending(), RunExitReason::StopRequested);
}

TEST(StopPolicyTest, AScenarioThatStopsWithinTheGraceTimeWasStopped) {
    StopPolicy plan = Plan(std::nullopt);
    plan.OnStopRequested(At(10));
    EXPECT_EQ(plan.OnScenarioEnded(), RunStep::KillTree);
    EXPECT_EQ(plan.Ending(), RunExitReason::StopRequested);
    EXPECT_EQ(plan.Deadline(), std::nullopt);
}

TEST(StopPolicyTest, ARequestThatIsRepeatedDoesNotLengthenTheGraceTime) {
    StopPolicy plan = Plan(std::nullopt);
    plan.OnStopRequested(At(10));
    EXPECT_EQ(plan.OnStopRequested(At(14)), RunStep::Wait);
    EXPECT_EQ(plan.Deadline(), At(15));
    EXPECT_EQ(plan.OnStopRequested(At(15)), RunStep::KillTree);
}

TEST(StopPolicyTest, TheTimeLimitStopsTheScenarioAsARequestDoes) {
    StopPolicy plan = Plan(seconds(60));
    EXPECT_EQ(plan.Deadline(), At(60));
    EXPECT_EQ(plan.OnTime(At(59)), RunStep::Wait);
    EXPECT_EQ(plan.OnTime(At(60)), RunStep::RequestStop);
    EXPECT_EQ(plan.Deadline(), At(65));
    EXPECT_EQ(plan.OnTime(At(65)), RunStep::KillTree);
    EXPECT_EQ(plan.Ending(), RunExitReason::TimeLimit);
}

TEST(StopPolicyTest, TheFirstReasonToStopCounts) {
    StopPolicy limitFirst = Plan(seconds(60));
    limitFirst.OnTime(At(60));
    EXPECT_EQ(limitFirst.OnStopRequested(At(61)), RunStep::Wait);
    EXPECT_EQ(limitFirst.Ending(), RunExitReason::TimeLimit);

    StopPolicy requestFirst = Plan(seconds(60));
    requestFirst.OnStopRequested(At(58));
    EXPECT_EQ(requestFirst.OnTime(At(60)), RunStep::Wait);
    EXPECT_EQ(requestFirst.Ending(), RunExitReason::StopRequested);
}

TEST(StopPolicyTest, AHostThatEndedTakesTheScenarioWithItAtOnce) {
    StopPolicy running = Plan(seconds(60));
    EXPECT_EQ(running.OnHostEnded(), RunStep::KillTree);
    EXPECT_EQ(running.Ending(), RunExitReason::HostEnded);

    StopPolicy stopping = Plan(seconds(60));
    stopping.OnStopRequested(At(1));
    EXPECT_EQ(stopping.OnHostEnded(), RunStep::KillTree);
    EXPECT_EQ(stopping.Ending(), RunExitReason::HostEnded);
}
