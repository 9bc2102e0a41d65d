#include "kit/processes/ScenarioRunFixture.h"
#include "kit/processes/ScenarioTraces.h"

#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "platform/processes/Process.h"
#include "text/Text.h"

namespace {

using ScenarioRunTest = ScenarioRunFixture;

/// A path of plain segments longer than old system calls accept.
std::wstring LongName() {
    return L"a rather long folder name that goes on and on, " + std::wstring(120, L'x');
}

} // namespace

TEST_F(ScenarioRunTest, AScenarioThatEndsWellSucceeds) {
    Run("print hello\nexit 0");
    EXPECT_TRUE(Result().succeeded);
    EXPECT_EQ(Log(), "hello\n");
}

TEST_F(ScenarioRunTest, AScenarioThatEndsWithAnotherExitCodeFailsAndShowsItsLastOutput) {
    Run("print something is wrong\nexit 3");
    const auto result = Result();
    EXPECT_FALSE(result.succeeded);
    ASSERT_EQ(result.messages.size(), 2U);
    EXPECT_EQ(result.messages[0].second, L"The scenario ended with exit code 3 and wrote no result.");
    EXPECT_EQ(result.messages[1].second, L"The last lines of its output:\nsomething is wrong");
}

TEST_F(ScenarioRunTest, TheScenariosOwnResultIsKept) {
    Run("write result failure\nexit 0");
    EXPECT_FALSE(Result().succeeded);
    EXPECT_EQ(FirstMessage(), L"its own words");
    Run("write result success\nexit 3");
    EXPECT_TRUE(Result().succeeded);
}

TEST_F(ScenarioRunTest, AnUnusableResultIsReplaced) {
    Run("write unusable result\nexit 0");
    EXPECT_FALSE(Result().succeeded);
    EXPECT_EQ(FirstMessage(), L"The scenario ended with exit code 0 and wrote a result that cannot be read.");
}

TEST_F(ScenarioRunTest, WhatAnEarlierRunLeftDoesNotCount) {
    Run("write result success");
    ASSERT_TRUE(Result().succeeded);
    RequestStop();
    WriteTextFile(InWorkDir(L"progress_info_list.json"), "{}");
    Run("exit 3");
    EXPECT_FALSE(Result().succeeded);
    EXPECT_FALSE(platform::Exists(InWorkDir(L"killprocess")));
    EXPECT_FALSE(platform::Exists(InWorkDir(L"progress_info_list.json")));
}

TEST_F(ScenarioRunTest, TheDescriptionBesideAScriptSaysWhichExitCodesAreSuccesses) {
    WriteTextFile(directory / L"scenario.scenario.json", R"({"version":1,"successExitCodes":[3]})");
    Run("exit 3");
    EXPECT_TRUE(Result().succeeded);
}

TEST_F(ScenarioRunTest, AScenarioIsToldAboutItsRunInNativePaths) {
    Run("print variable CONTROLLER_RUN_INFO");
    EXPECT_EQ(Log(), text::ToUtf8(platform::ToNativeText(InWorkDir(L"run_scenario_info.json"))) + "\n");
    run_protocol::RunScenarioInfo told;
    std::wstring problem;
    ASSERT_TRUE(run_protocol::ReadRunScenarioInfoFile(InWorkDir(L"run_scenario_info.json"), told, problem));
    EXPECT_EQ(told.jobId, L"3f9a0c1");
    EXPECT_EQ(told.workDir, platform::ToNativeText(job.workDir));
    EXPECT_EQ(told.scenarioPath, platform::ToNativeText(job.scenarioPath));
    EXPECT_EQ(told.outputFolder, platform::ToNativeText(job.outputFolder));
}

TEST_F(ScenarioRunTest, OfVeryMuchOutputTheEndIsKept) {
    settings.logLimitBytes = 65536;
    Run("print lines 500000\nprint the end");
    const std::string log = Log();
    EXPECT_TRUE(log.starts_with("[Earlier output was cut; only the end is kept.]\nline "));
    EXPECT_TRUE(log.ends_with("line 500000 of many\nthe end\n"));
    EXPECT_LE(log.size(), 65536U + 100U);
    EXPECT_GE(log.size(), 65536U - 100U);
}

TEST_F(ScenarioRunTest, WhatAScenarioLeavesBehindIsEnded) {
    Run("have family\nexit 0");
    EXPECT_TRUE(Result().succeeded);
    AwaitDeathOf(OpenNotedProcesses(job.workDir));
}

TEST_F(ScenarioRunTest, PathsMayHoldBlanksQuotesAndAnyLetters) {
    job.workDir = directory / L"it's a folder, with & and % \u00fc\u4e2d\\3f9a0c1";
    UseScenario(L"it's a scenario \u00e4.steps", "print hello");
    ASSERT_EQ(Start(), 0);
    EXPECT_EQ(AwaitEnd(), 0);
    EXPECT_TRUE(Result().succeeded);
    EXPECT_EQ(Log(), "hello\n");
}

TEST_F(ScenarioRunTest, PathsMayBeLongerThan300Characters) {
    const std::wstring longDirectory = LongName() + L"\\" + LongName();
    job.workDir = directory / (longDirectory + L"\\3f9a0c1");
    ASSERT_GT(job.workDir.size(), 300U);
    UseScenario(longDirectory + L"\\scenario.steps", "print hello");
    ASSERT_EQ(Start(), 0);
    EXPECT_EQ(AwaitEnd(), 0);
    EXPECT_TRUE(Result().succeeded);
}

TEST_F(ScenarioRunTest, ARubyScriptUsesTheScenarioApi) {
    if (!platform::FindProgram(L"ruby")) {
        GTEST_SKIP() << "no ruby in PATH";
    }
    job.runArgument = L"\u00fcber";
    UseScenario(L"scenario.rb", "require \"controller_scenario\"\n"
                                "ControllerScenario.run { |job| job.message(\"done: #{job.run_argument}\") }\n");
    ASSERT_EQ(Start(), 0);
    EXPECT_EQ(AwaitEnd(), 0);
    EXPECT_TRUE(Result().succeeded) << Log();
    EXPECT_EQ(FirstMessage(), L"done: \u00fcber");
}

TEST_F(ScenarioRunTest, AMissingInterpreterFailsTheJobAndSaysWhatToDo) {
    settings.stepsInterpreter = L"no_such_interpreter";
    UseSteps("exit 0");
    ASSERT_EQ(Start(), 0);
    EXPECT_NE(AwaitEnd(), 0);
    EXPECT_FALSE(Result().succeeded);
    EXPECT_EQ(FirstMessage(), L"The interpreter \"no_such_interpreter\" for " +
                                  platform::ToNativeText(job.scenarioPath) +
                                  L" was not found: install it, or name its program under \"interpreters\" in " +
                                  platform::ToNativeText(directory / L"settings.json") + L".");
}

TEST_F(ScenarioRunTest, AMissingScenarioFailsTheJob) {
    UseSteps("exit 0");
    ASSERT_TRUE(platform::RemoveFile(job.scenarioPath));
    ASSERT_EQ(Start(), 0);
    EXPECT_NE(AwaitEnd(), 0);
    EXPECT_FALSE(Result().succeeded);
    EXPECT_NE(FirstMessage().find(platform::ToNativeText(job.scenarioPath)), std::wstring::npos);
}

TEST_F(ScenarioRunTest, ABrokenDescriptionFailsTheJob) {
    WriteTextFile(directory / L"scenario.scenario.json", "{");
    UseSteps("exit 0");
    ASSERT_EQ(Start(), 0);
    EXPECT_NE(AwaitEnd(), 0);
    EXPECT_FALSE(Result().succeeded);
    EXPECT_NE(FirstMessage().find(L"scenario.scenario.json"), std::wstring::npos);
}
