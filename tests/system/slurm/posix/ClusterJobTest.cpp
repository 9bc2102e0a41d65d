#include "kit/OtherProcesses.h"
#include "kit/TestProcess.h"
#include "kit/processes/ScenarioTraces.h"
#include "kit/slurm/SlurmFixture.h"
#include "kit/slurm/SlurmLab.h"
#include "platform/files/FileSystem.h"

namespace {

using slurm::WaiterExit;
using testing::HasSubstr;

class ClusterJobTest : public SlurmFixture {
protected:
    void SetUp() override {
        if (!SlurmLab::IsThere()) {
            GTEST_SKIP() << "no cluster: ./run test slurm starts one";
        }
    }

    const SlurmLab lab;
};

} // namespace

TEST_F(ClusterJobTest, AScenarioSucceedsOnANode) {
    Run("print variable SLURM_JOB_NAME\nexit 0");
    EXPECT_TRUE(Result().succeeded);
    EXPECT_THAT(Log(), HasSubstr("controller-"));
}

TEST_F(ClusterJobTest, TheExitCodeAndTheSignalOfAScenarioAreReported) {
    Run("exit 7");
    EXPECT_THAT(Message(), HasSubstr("exit code 7"));
    UseSteps("raise 11");
    ASSERT_EQ(Start(), 0);
    EXPECT_EQ(AwaitEnd(), run_protocol::crashedExitCode);
    EXPECT_THAT(Message(), HasSubstr("signal 11"));
}

TEST_F(ClusterJobTest, WhatTheClusterRefusesIsReportedInItsWords) {
    settings.members = R"(,"slurm":{"partition":"nowhere"})";
    UseSteps("exit 0");
    ASSERT_EQ(Start(), 0);
    EXPECT_EQ(AwaitWaiter(), WaiterExit::NotStarted);
    EXPECT_THAT(Message(), HasSubstr("invalid partition specified: nowhere"));
}

TEST_F(ClusterJobTest, AnInterpreterAndARunnerThatTheNodeDoesNotHaveAreNamed) {
    settings.stepsInterpreter = test_support::ProgramPath(L"no_such_interpreter");
    UseSteps("exit 0");
    ASSERT_EQ(Start(), 0);
    EXPECT_EQ(AwaitWaiter(), WaiterExit::NotStarted);
    EXPECT_THAT(Message(), HasSubstr("no_such_interpreter"));
    settings.runner = test_support::ProgramPath(L"no_such_runner");
    ASSERT_EQ(Start(), 0);
    EXPECT_EQ(AwaitWaiter(), WaiterExit::NotStarted);
    EXPECT_THAT(Message(), HasSubstr("no_such_runner, cannot be started on the node "));
}

TEST_F(ClusterJobTest, ANodeWithoutTheWorkDirectoryRunsNothing) {
    lab.Do({L"stop", L"slurmd", L"n4"});
    lab.StartNodeWithout(L"n4", directory.Path());
    SlurmLab::AwaitIdle(L"n4");
    settings.members = R"(,"slurm":{"options":["--nodelist=n4"]})";
    UseSteps("exit 0");
    ASSERT_EQ(Start(), 0);
    EXPECT_EQ(AwaitWaiter(), WaiterExit::NoWorkDirectory);
    EXPECT_THAT(Message(), HasSubstr("The node does not have the job's work directory, "));
    lab.Do({L"stop", L"slurmd", L"n4"});
    lab.Do({L"start", L"slurmd", L"n4"});
    SlurmLab::AwaitIdle(L"n4");
}

TEST_F(ClusterJobTest, AJobThatWaitsForANodeIsCancelled) {
    settings.members = R"(,"slurm":{"options":["--begin=now+1hour"]})";
    UseSteps("exit 0");
    ASSERT_EQ(Start(), 0);
    Await("the job", [&] { return !JobName().empty() && SlurmLab::Has(JobName()); });
    EXPECT_EQ(Call("CancelScenario", job.jobId), 0);
    EXPECT_EQ(AwaitWaiter(), WaiterExit::Done);
    EXPECT_EQ(Message().substr(0, 38), "The job was cancelled on the cluster.\n");
    EXPECT_FALSE(SlurmLab::Has(JobName()));
}

TEST_F(ClusterJobTest, AJobIsCancelledAtOnce) {
    UseSteps(LiveStep() + "wait");
    ASSERT_EQ(Start(), 0);
    EXPECT_EQ(Call("CancelScenario", job.jobId), 0);
    EXPECT_NE(AwaitWaiter(), WaiterExit::Lost);
    EXPECT_FALSE(HasLife());
}

TEST_F(ClusterJobTest, ARunningScenarioIsAskedAndMayGiveItsResult) {
    StartAndAwaitReady(LiveStep() + "ignore requests\nbe ready\nwait for request\nwrite result success\nexit 0");
    EXPECT_EQ(Call("CancelScenario", job.jobId), 0);
    EXPECT_EQ(AwaitWaiter(), WaiterExit::Done);
    EXPECT_EQ(Message(), "its own words");
    EXPECT_FALSE(HasLife());
}

TEST_F(ClusterJobTest, AScenarioWithDaemonsIsKilledAfterItsGrace) {
    settings.graceSeconds = 0;
    StartAndAwaitReady("ignore requests\nhave family\nbe ready\nwait");
    const auto processes = OpenNotedProcesses(job.workDir);
    EXPECT_EQ(Call("CancelScenario", job.jobId), 0);
    EXPECT_EQ(AwaitWaiter(), WaiterExit::Done);
    AwaitDeathOf(processes);
    Await("the end of the job", [&] { return !SlurmLab::Has(JobName()); });
}

TEST_F(ClusterJobTest, AKilledWaiterTakesItsJobWithIt) {
    StartAndAwaitReady(LiveStep() + "ignore requests\nbe ready\nwait");
    test_support::KillProcess(runner.Get());
    AwaitEnd();
    Await("the end of the scenario", [&] { return !HasLife(); });
    Await("the end of the job", [&] { return !SlurmLab::Has(JobName()); });
}
