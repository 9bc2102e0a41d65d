#include "platform/processes/Orphans.h"

#include <string>

#include <gtest/gtest.h>

#include "kit/OtherProcesses.h"
#include "kit/TemporaryDirectory.h"
#include "kit/TestProcess.h"
#include "platform/files/NativePath.h"
#include "platform/system/Environment.h"

using platform::KillProcessesByEnvironment;

namespace {

constexpr const wchar_t* variable = L"CONTROLLER_TEST_MARK";

/// Processes with a unique mark that hold the write end of one pipe: its end of file shows that all have ended.
class OrphansTest : public testing::Test {
protected:
    void Start(const std::wstring& command, const std::wstring& value) {
        ASSERT_TRUE(life.Open());
        ASSERT_TRUE(output.Open());
        platform::ProcessStart start =
            test_support::TestProcess({command, platform::InheritedHandleText(life.WriteEnd())});
        start.environment = {{variable, value}};
        start.output = output.WriteEnd();
        start.inherited = {life.WriteEnd()};
        ASSERT_TRUE(platform::StartProcess(start, process));
        life.CloseWriteEnd();
        output.CloseWriteEnd();
        ASSERT_TRUE(test_support::ReadUntil(output, "ready"));
    }

    static std::wstring OwnValue() { return L"mark of " + std::to_wstring(platform::OwnProcessNumber()); }

    platform::OutputPipe life;
    platform::OutputPipe output;
    platform::OwnedHandle process;
};

} // namespace

TEST_F(OrphansTest, AProcessAndAllThatItStartedAreEnded) {
    Start(L"have-family", OwnValue());
    EXPECT_EQ(KillProcessesByEnvironment(variable, {L"another", OwnValue()}), 4U);
    EXPECT_EQ(test_support::ReadToEnd(life), "");
    EXPECT_EQ(KillProcessesByEnvironment(variable, {OwnValue()}), 0U);
}

TEST_F(OrphansTest, OtherValuesAreLeftAlone) {
    Start(L"wait", OwnValue() + L" and more");
    EXPECT_EQ(KillProcessesByEnvironment(variable, {OwnValue(), OwnValue() + L" and", L""}), 0U);
    EXPECT_EQ(KillProcessesByEnvironment(variable, {}), 0U);
    EXPECT_TRUE(platform::IsProcessRunning(process.Get()));
    EXPECT_EQ(KillProcessesByEnvironment(variable, {OwnValue() + L" and more"}), 1U);
}

/// During exec a process has no environment for a moment.
TEST_F(OrphansTest, AProcessThatOftenBecomesAnotherProgramIsEnded) {
    const TemporaryDirectory directory;
    WriteTextFile(directory / L"again", "exec /bin/sh \"$0\"\n");
    platform::ProcessStart start;
    start.program = L"/bin/sh";
    start.arguments = {platform::ToNativeText(directory / L"again")};
    start.environment = {{variable, OwnValue()}};
    for (int round = 0; round < 100; ++round) {
        ASSERT_TRUE(platform::StartProcess(start, process));
        const std::size_t count = KillProcessesByEnvironment(variable, {OwnValue()});
        test_support::KillProcess(process.Get());
        ASSERT_EQ(count, 1U);
    }
}

TEST_F(OrphansTest, TheProcessThatAsksIsNotEnded) {
    platform::SetEnvironment(variable, OwnValue());
    EXPECT_EQ(KillProcessesByEnvironment(variable, {OwnValue()}), 0U);
}
