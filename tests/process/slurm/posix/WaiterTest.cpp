#include <algorithm>
#include <csignal>

#include "kit/OtherProcesses.h"
#include "kit/SystemHelpers.h"
#include "kit/TestProcess.h"
#include "kit/processes/ScenarioTraces.h"
#include "kit/slurm/FakeSlurmFixture.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "platform/processes/Process.h"
#include "platform/system/Environment.h"
#include "slurm/AttemptFiles.h"

namespace {

using slurm::WaiterExit;
using testing::HasSubstr;

using WaiterTest = FakeSlurmFixture;

} // namespace

TEST_F(WaiterTest, AScenarioThatEndsWellOnTheNodeSucceeds) {
    Run("print hello\nexit 0");
    EXPECT_TRUE(Result().succeeded);
    EXPECT_EQ(Log(), "hello\n");
}

TEST_F(WaiterTest, TheExitCodeAndTheSignalOfAScenarioAreReported) {
    Run("exit 7");
    EXPECT_THAT(Message(), HasSubstr("exit code 7"));
    UseSteps("raise 11");
    ASSERT_EQ(Start(), 0);
    EXPECT_EQ(AwaitEnd(), run_protocol::crashedExitCode);
    EXPECT_THAT(Message(), HasSubstr("signal 11"));
}

TEST_F(WaiterTest, SuccessOfSrunWithoutAnEndOnTheNodeIsALostJob) {
    UseLostAfter(2);
    UseMode("claims");
    UseSteps("exit 0");
    ASSERT_EQ(Start(), 0);
    EXPECT_EQ(AwaitWaiter(), WaiterExit::Lost);
    EXPECT_FALSE(Result().succeeded);
    EXPECT_THAT(Message(), HasSubstr("The job was lost on the cluster: srun ended with exit code 0"));
}

TEST_F(WaiterTest, ASuccessWhoseEndNobodySawDoesNotCountAndItsProcessesEnd) {
    UseLostAfter(2);
    UseMode("leaves");
    StartAndAwaitReady(LiveStep() + "write result success\nbe ready\nwait");
    EXPECT_EQ(AwaitWaiter(), WaiterExit::Lost);
    EXPECT_FALSE(Result().succeeded);
    Await("the end of the scenario without its waiter", [&] { return !HasLife(); });
}

TEST_F(WaiterTest, WhatTheJobAsksForIsPassedToSrun) {
    settings.members = R"(,"slurm":{"partition":"main","account":"cad","memoryMegabytes":500,"options":["--qos=low"]})";
    WriteTextFile(directory / L"scenario.scenario.json", R"({"slurm":{"cpus":2,"minutes":30,"partition":"fast"}})");
    Run("exit 0");
    EXPECT_THAT(CallsOf(L"srun"), HasSubstr(" --partition=fast --account=cad --cpus-per-task=2 --mem=500M --time=30 "
                                            "--qos=low -- "));
}

TEST_F(WaiterTest, AManifestThatContradictsTheSettingsIsRefusedWithFileAndMember) {
    settings.members = R"(,"slurm":{"memoryMegabytes":500})";
    WriteTextFile(directory / L"scenario.scenario.json", R"({"slurm":{"options":["--mem-per-cpu=5"]}})");
    UseSteps("exit 0");
    ASSERT_EQ(Start(), 0);
    EXPECT_EQ(AwaitWaiter(), WaiterExit::NotStarted);
    EXPECT_THAT(Message(), HasSubstr("scenario.steps contradicts the settings "));
    EXPECT_THAT(Message(), HasSubstr(": slurm.options[0]: expected no other amount of memory"));
    EXPECT_EQ(CallsOf(L"srun"), "");
}

TEST_F(WaiterTest, VariablesOfAnotherJobDoNotReachSlurm) {
    platform::SetEnvironment(L"SLURM_JOB_ID", L"77");
    Run("print variable SLURM_JOB_ID\nexit 0");
    platform::SetEnvironment(L"SLURM_JOB_ID", L"");
    EXPECT_EQ(Log(), "(not set)\n");
}

TEST_F(WaiterTest, WithoutSrunTheResultSaysWhatIsMissing) {
    ASSERT_TRUE(platform::RemoveFile(state + L"\\srun"));
    platform::SetEnvironment(L"PATH", platform::ToNativeText(state));
    UseSteps("exit 0");
    ASSERT_EQ(Start(), 0);
    EXPECT_EQ(AwaitWaiter(), WaiterExit::NotStarted);
    EXPECT_THAT(Message(), HasSubstr("The program srun cannot be started: "));
}

TEST_F(WaiterTest, WhatTheClusterRefusesIsReportedInItsWords) {
    UseMode("refuses");
    UseSteps("exit 0");
    ASSERT_EQ(Start(), 0);
    EXPECT_EQ(AwaitWaiter(), WaiterExit::NotStarted);
    EXPECT_THAT(Message(), HasSubstr("The cluster did not run the job: srun ended with exit code 1"));
    EXPECT_THAT(Message(), HasSubstr("invalid partition specified: nowhere"));
}

TEST_F(WaiterTest, ANodeWithoutTheWorkDirectoryRunsNothing) {
    UseMode("elsewhere");
    UseSteps("exit 0");
    ASSERT_EQ(Start(), 0);
    EXPECT_EQ(AwaitWaiter(), WaiterExit::NoWorkDirectory);
    EXPECT_THAT(Message(), HasSubstr("The node does not have the job's work directory, "));
    EXPECT_FALSE(platform::Exists(InWorkDir(run_protocol::logFileName)));
}

TEST_F(WaiterTest, ARunnerThatTheNodeDoesNotHaveIsNamed) {
    settings.runner = test_support::ProgramPath(L"no_such_runner");
    UseSteps("exit 0");
    ASSERT_EQ(Start(), 0);
    EXPECT_EQ(AwaitWaiter(), WaiterExit::NotStarted);
    EXPECT_THAT(Message(), HasSubstr("no_such_runner, cannot be started on the node "));
}

TEST_F(WaiterTest, AJobThatWaitsForANodeIsCancelled) {
    UseMode("waits");
    UseSteps("exit 0");
    ASSERT_EQ(Start(), 0);
    Await("srun", [&] { return platform::Exists(state + L"\\queued"); });
    EXPECT_EQ(Call("CancelScenario", job.jobId), 0);
    EXPECT_EQ(AwaitWaiter(), WaiterExit::Done);
    EXPECT_EQ(Message(), "The job was cancelled on the cluster.");
}

TEST_F(WaiterTest, AJobIsCancelledAtOnce) {
    UseMode("waits");
    UseSteps("exit 0");
    ASSERT_EQ(Start(), 0);
    EXPECT_EQ(Call("CancelScenario", job.jobId), 0);
    // The request may come before the waiter can write a result.
    EXPECT_NE(AwaitWaiter(), WaiterExit::Lost);
    EXPECT_FALSE(platform::Exists(InWorkDir(run_protocol::resultFileName)) && Result().succeeded);
}

TEST_F(WaiterTest, ARunningScenarioIsAskedAndMayGiveItsResult) {
    StartAndAwaitReady("ignore requests\nbe ready\nwait for request\nwrite result success\nexit 0");
    EXPECT_EQ(Call("CancelScenario", job.jobId), 0);
    EXPECT_EQ(AwaitWaiter(), WaiterExit::Done);
    EXPECT_EQ(Message(), "its own words");
    EXPECT_THAT(CallsOf(L"scancel"), HasSubstr("--quiet --name=controller-"));
}

TEST_F(WaiterTest, AScenarioThatDoesNotObeyIsKilledAfterItsGrace) {
    settings.graceSeconds = 0;
    StartAndAwaitReady("ignore requests\nbe ready\nwait");
    EXPECT_EQ(Call("CancelScenario", job.jobId), 0);
    EXPECT_EQ(AwaitWaiter(), WaiterExit::Done);
    EXPECT_EQ(Message(), "The scenario was stopped because it was asked to.");
}

TEST_F(WaiterTest, AKilledWaiterTakesItsJobWithIt) {
    StartAndAwaitReady(LiveStep() + "ignore requests\nbe ready\nwait");
    ASSERT_TRUE(HasLife());
    test_support::KillProcess(runner.Get());
    AwaitEnd();
    Await("the end of the job", [&] { return !HasLife(); });
}

TEST_F(WaiterTest, ANodeThatFallsSilentIsALostJob) {
    UseLostAfter(2);
    StartAndAwaitReady("be ready\nwait");
    ASSERT_EQ(kill(static_cast<pid_t>(platform::ProcessNumber(NodeProcess().Get())), SIGSTOP), 0);
    EXPECT_EQ(AwaitWaiter(), WaiterExit::Lost);
    EXPECT_THAT(Message(), HasSubstr("nothing was seen of it for 2 s"));
    EXPECT_FALSE(Result().succeeded);
}

TEST_F(WaiterTest, AnSrunThatDoesNotEndWithItsJobIsEnded) {
    UseLostAfter(2);
    UseMode("stays");
    Run("exit 0");
    EXPECT_TRUE(Result().succeeded);
}

TEST_F(WaiterTest, TheNextAttemptWaitsForTheEndOfOneThatStillRuns) {
    UseLostAfter(5);
    UseMode("leaves");
    StartAndAwaitReady(LiveStep() + "be ready\nignore requests\nwait");
    test_support::KillProcess(runner.Get());
    AwaitEnd();
    ASSERT_TRUE(HasLife());
    UseLostAfter(60);
    UseMode("");
    UseSteps("exit 0");
    ASSERT_EQ(Start(), 0);
    Await("the second srun", [&] {
        const std::string calls = CallsOf(L"srun");
        return std::count(calls.begin(), calls.end(), '\n') == 2;
    });
    EXPECT_FALSE(HasLife());
    EXPECT_EQ(AwaitWaiter(), WaiterExit::Done);
    EXPECT_TRUE(Result().succeeded);
}

TEST_F(WaiterTest, AnAttemptThatLostItsLeaseBeforeItStartsRunsNothing) {
    const slurm::AttemptFiles later(job.workDir, L"controller-0-0-3f9a0c1-later");
    UseMode("waits");
    UseSteps("exit 0");
    ASSERT_EQ(Start(), 0);
    Await("srun", [&] { return platform::Exists(state + L"\\queued"); });
    const std::wstring earlierName = JobName();
    ASSERT_TRUE(later.WriteLease(0));
    platform::ProcessStart node;
    node.program = test_support::ProgramPath(L"slurm_waiter");
    node.currentDirectory = job.workDir;
    node.arguments = {L"--node",       earlierName,
                      L"--work-dir",   platform::ToNativeText(job.workDir),
                      L"--runner",     platform::ToNativeText(settings.runner),
                      L"--settings",   platform::ToNativeText(InWorkDir(L"run_settings.json")),
                      L"--lost-after", L"100"};
    EXPECT_EQ(test_support::RunToEnd(node).exitCode, static_cast<std::int32_t>(WaiterExit::GivenUp));
    EXPECT_FALSE(platform::Exists(InWorkDir(run_protocol::logFileName)));
}

TEST_F(WaiterTest, ANodeWithoutAllItsOptionsOrWithoutATimeIsRefused) {
    platform::ProcessStart node;
    node.program = test_support::ProgramPath(L"slurm_waiter");
    const std::vector<std::wstring> withoutTime = {L"--node",   JobName(),  L"--work-dir", L"/w",
                                                   L"--runner", L"/runner", L"--settings", L"/settings"};
    node.arguments = withoutTime;
    EXPECT_EQ(test_support::RunToEnd(node).exitCode, static_cast<std::int32_t>(WaiterExit::WrongArguments));
    for (const wchar_t* const time : {L"soon", L"-1", L""}) {
        node.arguments = withoutTime;
        node.arguments.insert(node.arguments.end(), {L"--lost-after", time});
        EXPECT_EQ(test_support::RunToEnd(node).exitCode, static_cast<std::int32_t>(WaiterExit::WrongArguments)) << time;
    }
}

TEST_F(WaiterTest, OnlyJobsOfEarlierHostsOfTheSameListAreCancelledAtTheStart) {
    const platform::OwnedHandle self = platform::OpenSelf();
    WriteTextFile(state + L"\\queue", "controller-a-old-1-x\ncontroller-a-new-2-x\ncontroller-b-old-3-x\nother\n");
    platform::ProcessStart sweep;
    sweep.program = test_support::ProgramPath(L"slurm_waiter");
    sweep.arguments = {L"--end-lost", L"controller-a-", L"--keep",
                       L"new",        L"--host",        platform::InheritedHandleText(self.Get())};
    sweep.inherited = {self.Get()};
    EXPECT_EQ(test_support::RunToEnd(sweep).exitCode, 0);
    EXPECT_EQ(CallsOf(L"scancel"), "--quiet --name=controller-a-old-1-x\n");
}
