#include "slurm/CancelPlan.h"

#include <gtest/gtest.h>

namespace {

using slurm::CancelPlan;
using slurm::CancelStep;
using slurm::Time;
using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr Time start{};

} // namespace

TEST(CancelPlanTest, NothingIsDoneBeforeTheRequest) {
    CancelPlan plan(seconds(5));
    EXPECT_EQ(plan.Next(start + seconds(100)), CancelStep::Wait);
    EXPECT_FALSE(plan.HasBegun());
}

TEST(CancelPlanTest, TheClusterIsAskedEachSecond) {
    CancelPlan plan(seconds(5));
    plan.Begin(start);
    EXPECT_EQ(plan.Next(start), CancelStep::AskCluster);
    EXPECT_EQ(plan.Next(start + milliseconds(999)), CancelStep::Wait);
    plan.Begin(start + milliseconds(999));
    EXPECT_EQ(plan.Next(start + seconds(1)), CancelStep::AskCluster);
}

TEST(CancelPlanTest, SrunIsTerminatedAfterTheGraceAndKilledLater) {
    CancelPlan plan(seconds(5));
    plan.Begin(start);
    EXPECT_EQ(plan.Next(start + seconds(5)), CancelStep::TerminateSrun);
    EXPECT_EQ(plan.Next(start + seconds(14)), CancelStep::TerminateSrun);
    EXPECT_EQ(plan.Next(start + seconds(15)), CancelStep::KillSrun);
}

TEST(CancelPlanTest, AJobThatHasEndedIsNotAsked) {
    CancelPlan plan(seconds(5));
    plan.BeginWithoutGrace(start);
    EXPECT_EQ(plan.Next(start), CancelStep::TerminateSrun);
}
