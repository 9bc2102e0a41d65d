#include "kit/processes/ScenarioRunFixture.h"
#include "kit/processes/ScenarioTraces.h"

#include "kit/TestProcess.h"

using KilledRunnerTest = ScenarioRunFixture;

TEST_F(KilledRunnerTest, TheGuardSaysWhatBecameOfTheRunnerAndEndsWhatHidItself) {
    StartAndAwaitReady(
        "ignore requests\nhave family\nleave daemon\nbe ready\nwait for file go\nkill ancestors 1\nwait");
    const auto processes = OpenNotedProcesses(job.workDir);
    EXPECT_EQ(processes.size(), 6U);
    WriteTextFile(InWorkDir(L"go"), "");
    EXPECT_EQ(AwaitEnd(), 0);
    for (const auto& process : processes) {
        EXPECT_FALSE(platform::IsProcessRunning(process.Get()));
    }
    EXPECT_FALSE(Result().succeeded);
    EXPECT_EQ(FirstMessage(), L"The scenario was ended because the program that runs it was ended with exit code 137 "
                              L"(signal 9, Killed).");
}

TEST_F(KilledRunnerTest, AVerdictThatTheScenarioGaveBeforeStands) {
    Run("write result success\nkill ancestors 1\nwait");
    EXPECT_TRUE(Result().succeeded);
    EXPECT_EQ(FirstMessage(), L"its own words");
}

TEST_F(KilledRunnerTest, ARunnerThatTheScenarioStopsGoesOn) {
    Run("stop ancestors 1\nexit 3");
    EXPECT_EQ(FirstMessage(), L"The scenario ended with exit code 3 and wrote no result.");
}

TEST_F(KilledRunnerTest, ARunnerWithAllItsProcessesStoppedIsWokenUpByTheRequestToStop) {
    settings.graceSeconds = 0;
    StartAndAwaitReady("stop ancestors 2\nbe ready\nwait");
    EXPECT_EQ(Call("CancelScenario", job.jobId), 0);
    EXPECT_EQ(AwaitEnd(), 0);
    EXPECT_EQ(FirstMessage(), L"The scenario was stopped because it was asked to.");
}

TEST_F(KilledRunnerTest, AScenarioThatAsksItsRunnerToEndIsAskedToStopItself) {
    for (const char* const generations : {"1", "2"}) {
        Run(std::string("ask ancestors to end ") + generations + "\nignore requests\nwait for request\nexit 0");
        EXPECT_EQ(FirstMessage(), L"The scenario was stopped because it was asked to.");
    }
}

TEST_F(KilledRunnerTest, AScenarioThatStoppedItselfHeedsTheRequestToStop) {
    StartAndAwaitReady("be ready\nraise 19");
    EXPECT_EQ(Call("CancelScenario", job.jobId), 0);
    EXPECT_EQ(AwaitEnd(), 0);
    EXPECT_EQ(FirstMessage(), L"The scenario was stopped because it was asked to.");
}
