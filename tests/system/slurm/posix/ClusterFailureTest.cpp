#include <csignal>

#include "kit/OtherProcesses.h"
#include "kit/TestProcess.h"
#include "kit/slurm/SlurmFixture.h"
#include "kit/slurm/SlurmLab.h"
#include "platform/files/FileSystem.h"

namespace {

using slurm::WaiterExit;
using testing::HasSubstr;

constexpr auto onFirstNode = R"("--nodelist=n1")";

class ClusterFailureTest : public SlurmFixture {
protected:
    void SetUp() override {
        if (!SlurmLab::IsThere()) {
            GTEST_SKIP() << "no cluster: ./run test slurm starts one";
        }
        UseLostAfter(60, onFirstNode);
    }

    const SlurmLab lab;
};

} // namespace

TEST_F(ClusterFailureTest, AScenarioGoesOnWhileItsNodeStartsSlurmAgain) {
    StartAndAwaitReady("be ready\nwait for file go\nexit 0");
    lab.Do({L"kill", L"slurmd", L"n1"});
    lab.Do({L"start", L"slurmd", L"n1"});
    WriteTextFile(InWorkDir(L"go"), "");
    EXPECT_EQ(AwaitWaiter(), WaiterExit::Done);
    EXPECT_TRUE(Result().succeeded);
    SlurmLab::AwaitIdle(L"n1");
}

TEST_F(ClusterFailureTest, ANodeThatIsGoneLosesTheJobAndTheNextAttemptWaitsForItsEnd) {
    UseLostAfter(5, onFirstNode);
    StartAndAwaitReady(LiveStep() + "ignore requests\nwrite result success\nbe ready\nwait");
    lab.Do({L"kill", L"slurmd", L"n1"});
    EXPECT_EQ(AwaitWaiter(), WaiterExit::Lost);
    EXPECT_FALSE(Result().succeeded);
    UseLostAfter(60, R"("--nodelist=n2")");
    StartAndAwaitReady("wait for file ready\nexit 0");
    EXPECT_EQ(AwaitWaiter(), WaiterExit::Done);
    EXPECT_FALSE(HasLife());
    EXPECT_TRUE(Result().succeeded);
    lab.Do({L"start", L"slurmd", L"n1"});
    SlurmLab::AwaitIdle(L"n1");
}

TEST_F(ClusterFailureTest, AJobWhoseStepIsKilledEndsAndIsLost) {
    StartAndAwaitReady(LiveStep() + "ignore requests\nbe ready\nwait");
    const platform::OwnedHandle step = test_support::OpenProcessByNumber(SlurmLab::StepProcessOf(JobName()));
    ASSERT_TRUE(step);
    test_support::KillProcess(step.Get());
    EXPECT_EQ(AwaitWaiter(), WaiterExit::Lost);
    EXPECT_FALSE(HasLife());
    Await("the end of the job", [&] { return !SlurmLab::Has(JobName()); });
    SlurmLab::AwaitIdle(L"n1");
}

TEST_F(ClusterFailureTest, AJobThatEndsWhileTheControllerOfTheClusterIsAwaySucceedsAndLeavesNothing) {
    // Slurm takes minutes to give its node to other jobs.
    UseLostAfter(60, R"("--nodelist=n3")");
    StartAndAwaitReady("be ready\nwait for file go\nexit 0");
    lab.Do({L"stop", L"slurmctld"});
    WriteTextFile(InWorkDir(L"go"), "");
    Await("the end of the scenario", [&] { return platform::Exists(InWorkDir(run_protocol::resultFileName)); });
    lab.Do({L"start", L"slurmctld"});
    EXPECT_EQ(AwaitWaiter(), WaiterExit::Done);
    EXPECT_TRUE(Result().succeeded);
    Await("the end of the job", [&] { return !SlurmLab::Has(JobName()); });
}

TEST_F(ClusterFailureTest, AJobThatStartsWhileTheControllerOfTheClusterIsAwayRunsLater) {
    UseLostAfter(60);
    lab.Do({L"stop", L"slurmctld"});
    UseSteps("exit 0");
    ASSERT_EQ(Start(), 0);
    Await("the attempt", [&] { return !JobName().empty(); });
    lab.Do({L"start", L"slurmctld"});
    EXPECT_EQ(AwaitWaiter(), WaiterExit::Done);
    EXPECT_TRUE(Result().succeeded);
}
