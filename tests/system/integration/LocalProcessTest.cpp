#include "kit/SystemHelpers.h"
#include "kit/TestProcess.h"
#include "kit/processes/ScenarioRunFixture.h"
#include "platform/files/Directory.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"

namespace {

using LocalProcessTest = ScenarioRunFixture;

} // namespace

TEST_F(LocalProcessTest, TheAnswerIsTheHandleOfARunningProcess) {
    settings.graceSeconds = 0;
    UseSteps("wait");
    ASSERT_EQ(Start(), 0);
    EXPECT_TRUE(platform::IsProcessRunning(runner.Get()));
}

TEST_F(LocalProcessTest, ARequestThatCannotBeReadIsRefused) {
    WriteSettings();
    EXPECT_NE(Call("RunScenario", L"{"), 0);
    EXPECT_NE(Call("RunScenario", L""), 0);
    EXPECT_FALSE(runner);
}

TEST_F(LocalProcessTest, AWorkDirectoryThatCannotBeMadeFailsTheStart) {
    WriteTextFile(directory / L"work", "a file in the place of a folder");
    UseSteps("exit 0");
    EXPECT_NE(Start(), 0);
    EXPECT_FALSE(runner);
}

TEST_F(LocalProcessTest, AWorkDirectoryThatOthersCouldExchangeIsNotUsed) {
    WriteTextFile(directory / L"work\\.keep", "");
    LetEverybodyWrite(directory / L"work");
    UseSteps("exit 0");
    EXPECT_NE(Start(), 0);
    EXPECT_FALSE(runner);
    EXPECT_FALSE(platform::Exists(job.workDir));
}

TEST_F(LocalProcessTest, ALinkInPlaceOfTheWorkDirectoryIsNotUsed) {
    WriteTextFile(directory / L"work\\.keep", "");
    WriteTextFile(directory / L"elsewhere\\precious.txt", "content");
    if (!MakeLink(directory / L"elsewhere", job.workDir)) {
        GTEST_SKIP() << "no symbolic links here";
    }
    UseSteps("exit 0");
    EXPECT_NE(Start(), 0);
    std::vector<platform::DirectoryEntry> entries;
    ASSERT_TRUE(platform::ListDirectory(directory / L"elsewhere", entries));
    EXPECT_EQ(entries.size(), 1U);
}

TEST_F(LocalProcessTest, ARunnerThatIsMissingFailsTheStartAndLeavesAResultThatSaysSo) {
    settings.runner = test_support::ProgramPath(L"no_such_runner");
    UseSteps("exit 0");
    EXPECT_NE(Start(), 0);
    EXPECT_FALSE(runner);
    EXPECT_FALSE(Result().succeeded);
    EXPECT_TRUE(FirstMessage().starts_with(L"The program that runs scenarios, " +
                                           platform::ToNativeText(settings.runner) + L", cannot be started: "));
}

TEST_F(LocalProcessTest, WhatTheModuleDoesNotOfferIsNotCalled) {
    EXPECT_EQ(Call("NoSuchFunction", L""), -1);
}
