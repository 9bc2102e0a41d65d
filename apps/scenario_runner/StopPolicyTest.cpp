#include "scenario_runner/StopPolicy.h"

#include <gtest/gtest.h>

using scenario_runner::RunEnding;
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
    EXPECT_EQ(plan.OnScenarioEnded(), RunStep::EndTree);
    EXPECT_EQ(plan.Ending(), RunEnding::OnItsOwn);
}

TEST(StopPolicyTest, ARequestToStopGivesTheScenarioTheGraceTime) {
    StopPolicy plan = Plan(std::nullopt);
    EXPECT_EQ(plan.OnStopRequested(At(10)), RunStep::AskToStop);
    EXPECT_TRUE(plan.IsStopping());
    EXPECT_EQ(plan.Deadline(), At(15));
    EXPECT_EQ(plan.OnTime(At(14)), RunStep::Wait);
    EXPECT_EQ(plan.OnTime(At(15)), RunStep::EndTree);
    EXPECT_EQ(plan.Ending(), RunEnding::StopRequested);
}

TEST(StopPolicyTest, AScenarioThatStopsWithinTheGraceTimeWasStopped) {
    StopPolicy plan = Plan(std::nullopt);
    plan.OnStopRequested(At(10));
    EXPECT_EQ(plan.OnScenarioEnded(), RunStep::EndTree);
    EXPECT_EQ(plan.Ending(), RunEnding::StopRequested);
    EXPECT_EQ(plan.Deadline(), std::nullopt);
}

TEST(StopPolicyTest, ARequestThatIsRepeatedDoesNotLengthenTheGraceTime) {
    StopPolicy plan = Plan(std::nullopt);
    plan.OnStopRequested(At(10));
    EXPECT_EQ(plan.OnStopRequested(At(14)), RunStep::Wait);
    EXPECT_EQ(plan.Deadline(), At(15));
    EXPECT_EQ(plan.OnStopRequested(At(15)), RunStep::EndTree);
}

TEST(StopPolicyTest, TheTimeLimitStopsTheScenarioAsARequestDoes) {
    StopPolicy plan = Plan(seconds(60));
    EXPECT_EQ(plan.Deadline(), At(60));
    EXPECT_EQ(plan.OnTime(At(59)), RunStep::Wait);
    EXPECT_EQ(plan.OnTime(At(60)), RunStep::AskToStop);
    EXPECT_EQ(plan.Deadline(), At(65));
    EXPECT_EQ(plan.OnTime(At(65)), RunStep::EndTree);
    EXPECT_EQ(plan.Ending(), RunEnding::TimeLimit);
}

TEST(StopPolicyTest, TheFirstReasonToStopCounts) {
    StopPolicy limitFirst = Plan(seconds(60));
    limitFirst.OnTime(At(60));
    EXPECT_EQ(limitFirst.OnStopRequested(At(61)), RunStep::Wait);
    EXPECT_EQ(limitFirst.Ending(), RunEnding::TimeLimit);

    StopPolicy requestFirst = Plan(seconds(60));
    requestFirst.OnStopRequested(At(58));
    EXPECT_EQ(requestFirst.OnTime(At(60)), RunStep::Wait);
    EXPECT_EQ(requestFirst.Ending(), RunEnding::StopRequested);
}

TEST(StopPolicyTest, AHostThatEndedTakesTheScenarioWithItAtOnce) {
    StopPolicy running = Plan(seconds(60));
    EXPECT_EQ(running.OnHostEnded(), RunStep::EndTree);
    EXPECT_EQ(running.Ending(), RunEnding::HostEnded);

    StopPolicy stopping = Plan(seconds(60));
    stopping.OnStopRequested(At(1));
    EXPECT_EQ(stopping.OnHostEnded(), RunStep::EndTree);
    EXPECT_EQ(stopping.Ending(), RunEnding::HostEnded);
}
