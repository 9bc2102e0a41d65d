#include "kit/processes/ScenarioRunFixture.h"

#include "ControllerCSWrapper/ControllerCSWrapper.h"

using UnrulyScenarioTest = ScenarioRunFixture;

TEST_F(UnrulyScenarioTest, OneThatAbortsFails) {
    for (const char* const misdeed : {"abort", "throw what nobody catches"}) {
        UseSteps(misdeed);
        ASSERT_EQ(Start(), 0);
        // On Windows `abort` is an exit with code 3, which does not look like a crash.
        const std::int32_t exitCode = AwaitEnd();
        EXPECT_TRUE(exitCode == 0 || exitCode == run_protocol::crashedExitCode) << exitCode;
        EXPECT_FALSE(Result().succeeded);
        EXPECT_TRUE(FirstMessage().starts_with(L"The scenario ended with exit code ")) << misdeed;
    }
}

TEST_F(UnrulyScenarioTest, OneThatGivesItsResultAndGoesOnRunsUntilItIsStopped) {
    settings.graceSeconds = 0;
    StartAndAwaitReady("write result success\nbe ready\nignore requests\nwait");
    EXPECT_TRUE(platform::IsProcessRunning(runner.Get()));
    RequestStop();
    EXPECT_EQ(AwaitEnd(), 0);
    EXPECT_TRUE(Result().succeeded);
}

TEST_F(UnrulyScenarioTest, OneThatWritesHalfReportsForEverIsStoppedAsAnyOther) {
    settings.graceSeconds = 0;
    StartAndAwaitReady("be ready\nwrite half reports progress_info_list.json\nwait");
    std::wstring message;
    int progress = 7;
    EXPECT_FALSE(ControllerCSWrapper::ParseProgressFile(InWorkDir(L"progress_info_list.json"), message, progress));
    EXPECT_EQ(progress, 7);
    RequestStop();
    EXPECT_EQ(AwaitEnd(), 0);
}
