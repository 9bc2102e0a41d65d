#include "scenario_runner/RunnerArguments.h"

#include <gtest/gtest.h>

#include "platform/system/Environment.h"

using scenario_runner::ParseRunnerArguments;
using scenario_runner::RunnerArguments;

namespace {

const std::wstring workDir = platform::TemporaryDirectory();

} // namespace

TEST(RunnerArgumentsTest, AllArgumentsAreRead) {
    RunnerArguments parsed;
    std::wstring problem;
    ASSERT_TRUE(
        ParseRunnerArguments({L"--host", L"0x1f4", L"--work-dir", workDir, L"--settings", L"s.json"}, parsed, problem));
    EXPECT_EQ(parsed.workDir, workDir);
    EXPECT_EQ(parsed.host, L"0x1f4");
    EXPECT_EQ(parsed.settingsFile, L"s.json");
}

TEST(RunnerArgumentsTest, TheWorkDirectoryIsEnough) {
    RunnerArguments parsed;
    std::wstring problem;
    ASSERT_TRUE(ParseRunnerArguments({L"--work-dir", workDir}, parsed, problem));
    EXPECT_EQ(parsed.host, L"");
}

TEST(RunnerArgumentsTest, AServerGetsItsWorkDirectoriesLater) {
    RunnerArguments parsed;
    std::wstring problem;
    ASSERT_TRUE(ParseRunnerArguments({L"--host", L"0x1f4", L"--serve", L"0x1f5"}, parsed, problem));
    EXPECT_EQ(parsed.serve, L"0x1f5");
    EXPECT_EQ(parsed.workDir, L"");
}

TEST(RunnerArgumentsTest, AnythingElseIsRefusedWithAReason) {
    const std::vector<std::vector<std::wstring>> refused = {{},
                                                            {L"--work-dir"},
                                                            {L"--work-dir", L"relative"},
                                                            {workDir},
                                                            {L"--work-dir", workDir, L"--other", L"x"},
                                                            {L"--work-dir", workDir, L"--host"},
                                                            {L"--work-dir", workDir, L"--serve", L"0x1f5"}};
    for (const auto& arguments : refused) {
        RunnerArguments parsed;
        parsed.host = L"before";
        std::wstring problem;
        EXPECT_FALSE(ParseRunnerArguments(arguments, parsed, problem));
        EXPECT_NE(problem, L"");
        EXPECT_EQ(parsed.host, L"before");
    }
}
