#include "scenario_runner/RunResult.h"

#include <gtest/gtest.h>

#include "kit/LogCapture.h"
#include "kit/TemporaryDirectory.h"

using run_protocol::RunScenarioResult;
using scenario_runner::ReadOwnResult;
using scenario_runner::ResultOf;
using scenario_runner::RunExitReason;
using scenario_runner::RunFacts;

namespace {

RunFacts EndedWith(std::int32_t exitCode) {
    RunFacts facts;
    facts.jobId = L"3f9a0c1";
    facts.exitCode = exitCode;
    facts.successExitCodes = {0};
    return facts;
}

const RunScenarioResult ownSuccess{L"3f9a0c1", true, {{0, L"All done"}}, {L"/out/report.json"}};

} // namespace

TEST(RunResultTest, ASuccessExitCodeWithoutAResultIsASuccess) {
    const RunScenarioResult expected{
        L"3f9a0c1", true, {{0, L"The scenario ended with exit code 0 and wrote no result."}}, {}};
    EXPECT_EQ(ResultOf(EndedWith(0)), expected);
}

TEST(RunResultTest, AnotherExitCodeIsAFailureThatNamesIt) {
    const RunScenarioResult expected{
        L"3f9a0c1", false, {{1, L"The scenario ended with exit code 3 and wrote no result."}}, {}};
    EXPECT_EQ(ResultOf(EndedWith(3)), expected);
}

TEST(RunResultTest, TheDescriptionSaysWhichExitCodesAreSuccesses) {
    RunFacts facts = EndedWith(3);
    facts.successExitCodes = {2, 3};
    EXPECT_TRUE(ResultOf(facts)->succeeded);
    facts = EndedWith(0);
    facts.successExitCodes = {2, 3};
    EXPECT_FALSE(ResultOf(facts)->succeeded);
}

TEST(RunResultTest, AFailureShowsTheLastOutput) {
    RunFacts facts = EndedWith(1);
    facts.lastOutput = L"part.rb:3: undefined method";
    const auto result = ResultOf(facts);
    ASSERT_EQ(result->messages.size(), 2U);
    EXPECT_EQ(result->messages[1].second, L"The last lines of its output:\npart.rb:3: undefined method");

    facts.exitCode = 0;
    EXPECT_EQ(ResultOf(facts)->messages.size(), 1U);
}

TEST(RunResultTest, AMissingApiIsNamedWhereTheScenarioAskedForIt) {
    RunFacts facts = EndedWith(1);
    facts.apiProblem = L"The API was not found.";
    facts.lastOutput = L"part.rb:3: undefined method";
    EXPECT_EQ(ResultOf(facts)->messages.at(0).second, L"The scenario ended with exit code 1 and wrote no result.");
    facts.lastOutput = L"part.rb:1:in `require': cannot load such file -- controller_scenario (LoadError)";
    EXPECT_EQ(ResultOf(facts)->messages.at(0).second,
              L"The scenario ended with exit code 1 and wrote no result. The API was not found.");
}

TEST(RunResultTest, TheScenariosOwnResultStays) {
    RunFacts facts = EndedWith(3);
    facts.ownResult = ownSuccess;
    EXPECT_EQ(ResultOf(facts), std::nullopt);
    facts.ending = RunExitReason::StopRequested;
    EXPECT_EQ(ResultOf(facts), std::nullopt);
}

TEST(RunResultTest, AResultThatCannotBeReadIsAFailureWhateverTheExitCode) {
    RunFacts facts = EndedWith(0);
    facts.hasUnusableResult = true;
    const auto result = ResultOf(facts);
    EXPECT_FALSE(result->succeeded);
    EXPECT_EQ(result->messages[0].second,
              L"The scenario ended with exit code 0 and wrote a result that cannot be read.");
}

TEST(RunResultTest, ATimeLimitIsAFailureThatNamesIt) {
    RunFacts facts = EndedWith(0);
    facts.ending = RunExitReason::TimeLimit;
    facts.timeLimitSeconds = 60;
    const RunScenarioResult expected{
        L"3f9a0c1", false, {{1, L"The scenario was stopped because it ran longer than its time limit of 60 s."}}, {}};
    EXPECT_EQ(ResultOf(facts), expected);
}

TEST(RunResultTest, AScenarioThatWasKilledForItsMemoryHasFailedForIt) {
    RunFacts facts = EndedWith(137);
    facts.exceededMemoryMiB = 512;
    EXPECT_EQ(ResultOf(facts)->messages.at(0).second,
              L"The scenario was stopped because it used more memory than its limit of 512 MiB.");
    facts.ownResult = ownSuccess;
    EXPECT_EQ(ResultOf(facts), std::nullopt);
}

TEST(RunResultTest, WhatTheScenarioSaidBeforeItsTimeLimitStays) {
    RunFacts facts = EndedWith(0);
    facts.ending = RunExitReason::TimeLimit;
    facts.timeLimitSeconds = 60;
    facts.ownResult = ownSuccess;
    const auto result = ResultOf(facts);
    EXPECT_FALSE(result->succeeded);
    ASSERT_EQ(result->messages.size(), 2U);
    EXPECT_EQ(result->messages[1].second, L"All done");
    EXPECT_EQ(result->outputFiles, ownSuccess.outputFiles);
}

TEST(RunResultTest, AScenarioThatWasStoppedDidNotSucceed) {
    RunFacts facts = EndedWith(0);
    facts.ending = RunExitReason::StopRequested;
    EXPECT_FALSE(ResultOf(facts)->succeeded);
}

TEST(RunResultTest, AJobThatItsHostStoppedForAReasonHasFailedForIt) {
    RunFacts facts = EndedWith(0);
    facts.ending = RunExitReason::StopRequested;
    facts.stopReason = L"it ran longer than its time limit of 5 s.";
    facts.ownResult = ownSuccess;
    const auto result = ResultOf(facts);
    EXPECT_FALSE(result->succeeded);
    EXPECT_EQ(result->messages.at(0).second,
              L"The scenario was stopped because it ran longer than its time limit of 5 s.");
    EXPECT_EQ(result->messages.at(1).second, L"All done");
}

TEST(RunResultTest, WithoutAHostNobodyReadsAResult) {
    RunFacts facts = EndedWith(0);
    facts.ending = RunExitReason::HostEnded;
    EXPECT_EQ(ResultOf(facts), std::nullopt);
}

TEST(RunResultTest, AnExitCodeThatCannotBeToldIsAFailure) {
    RunFacts facts = EndedWith(0);
    facts.exitCode = std::nullopt;
    EXPECT_FALSE(ResultOf(facts)->succeeded);
    EXPECT_EQ(ResultOf(facts)->messages[0].second, L"The scenario ended and wrote no result.");
}

TEST(RunResultTest, OnlyAValidResultOfTheScenarioIsRead) {
    const TemporaryDirectory workDir;
    const LogCapture log;
    EXPECT_EQ(ReadOwnResult(workDir.Path()), std::nullopt);
    EXPECT_EQ(log.Text(), "");
    WriteTextFile(workDir / run_protocol::resultFileName, "{");
    EXPECT_EQ(ReadOwnResult(workDir.Path()), std::nullopt);
    WriteTextFile(workDir / run_protocol::resultFileName, R"({"jobId":"3f9a0c1","succeeded":true})");
    const RunScenarioResult expected{L"", true, {}, {}};
    EXPECT_EQ(ReadOwnResult(workDir.Path()), expected);
}
