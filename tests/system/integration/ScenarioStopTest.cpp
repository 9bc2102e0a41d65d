#include "kit/processes/ScenarioRunFixture.h"
#include "kit/processes/ScenarioTraces.h"

#include "kit/OtherProcesses.h"
#include "kit/TestProcess.h"
#include "platform/files/Directory.h"
#include "platform/files/NativePath.h"
#include "platform/processes/Process.h"
#include "platform/processes/Waiting.h"
#include "text/Text.h"

using ScenarioStopTest = ScenarioRunFixture;

TEST_F(ScenarioStopTest, AScenarioThatHeedsTheRequestStopsWithinTheGraceTime) {
    settings.graceSeconds = 600;
    StartAndAwaitReady("be ready\nwait for request\nprint stopping\nexit 3");
    RequestStop();
    EXPECT_EQ(AwaitEnd(), 0);
    EXPECT_FALSE(Result().succeeded);
    EXPECT_EQ(FirstMessage(), L"The scenario was stopped because it was asked to.");
}

TEST_F(ScenarioStopTest, ARequestFromBeforeTheStartOfTheScenarioIsHeeded) {
    settings.graceSeconds = 0;
    UseSteps("ignore requests\nwait");
    ASSERT_EQ(Start(), 0);
    RequestStop();
    EXPECT_EQ(AwaitEnd(), 0);
    EXPECT_FALSE(Result().succeeded);
}

TEST_F(ScenarioStopTest, AScenarioThatIgnoresTheRequestIsEndedWithAllItStarted) {
    settings.graceSeconds = 1;
    StartAndAwaitReady("ignore requests\nhave family\nbe ready\nwait");
    const auto processes = OpenNotedProcesses(job.workDir);
    EXPECT_EQ(processes.size(), 5U);
    RequestStop();
    EXPECT_EQ(AwaitEnd(), 0);
    AwaitDeathOf(processes);
}

TEST_F(ScenarioStopTest, AScenarioEndsWithItsHost) {
    settings.graceSeconds = 600;
    UseSteps("ignore requests\nhave family\nbe ready\nwait");
    WriteSettings();
    WriteTextFile(directory / L"request.json", text::ToUtf8(run_protocol::SerializeRunScenarioInfo(job)));
    ASSERT_TRUE(platform::EnsureDirectory(job.workDir));
    platform::ProcessStart start;
    start.program = test_support::ProgramPath(L"test_host");
    start.arguments = {settings.module, directory / L"settings.json", directory / L"request.json",
                       directory / L"started"};
    platform::OwnedHandle host;
    ASSERT_TRUE(platform::StartProcess(start, host));
    AwaitFile(job.workDir, L"ready");
    const auto processes = OpenNotedProcesses(job.workDir);
    EXPECT_EQ(processes.size(), 5U);
    test_support::KillProcess(host.Get());
    AwaitDeathOf(processes);
}

TEST_F(ScenarioStopTest, ATimeLimitStopsTheScenarioAndFailsTheJob) {
    settings.graceSeconds = 0;
    WriteTextFile(directory / L"scenario.scenario.json", R"({"version":1,"timeLimitSeconds":1})");
    Run("ignore requests\nwait", run_protocol::timedOutExitCode);
    EXPECT_FALSE(Result().succeeded);
    EXPECT_EQ(FirstMessage(), L"The scenario was stopped because it ran longer than its time limit of 1 s.");
}

TEST_F(ScenarioStopTest, AtItsTimeLimitAScenarioIsAskedFirst) {
    settings.graceSeconds = 600;
    WriteTextFile(directory / L"scenario.scenario.json", R"({"version":1,"timeLimitSeconds":1})");
    Run("ignore requests\nwait for request\nwrite result success", run_protocol::timedOutExitCode);
    const auto result = Result();
    EXPECT_FALSE(result.succeeded);
    ASSERT_EQ(result.messages.size(), 2U);
    EXPECT_EQ(result.messages[1].second, L"its own words");
}

TEST_F(ScenarioStopTest, ARunningJobCanBeCancelledByName) {
    settings.graceSeconds = 1;
    StartAndAwaitReady("be ready\nwait");
    EXPECT_NE(Call("CancelScenario", L"another"), 0);
    EXPECT_EQ(Call("CancelScenario", job.jobId), 0);
    EXPECT_EQ(AwaitEnd(), 0);
    EXPECT_NE(Call("CancelScenario", job.jobId), 0);
}

TEST_F(ScenarioStopTest, TerminateStopsEveryRunningJob) {
    settings.graceSeconds = 1;
    StartAndAwaitReady("be ready\nwait");
    EXPECT_EQ(Call("Terminate", L""), 0);
    EXPECT_EQ(AwaitEnd(), 0);
    EXPECT_EQ(Call("Terminate", L""), 0);
}
