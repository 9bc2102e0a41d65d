#include "platform/processes/ProcessTree.h"

#include <gtest/gtest.h>

#include "kit/TestProcess.h"

using platform::ProcessStart;
using platform::ProcessTree;
using test_support::ReadToEnd;
using test_support::ReadUntil;
using test_support::TestProcess;
using test_support::WaitUntilSignalled;

namespace {

/// A tree whose processes all hold the write end of one pipe: its end of file shows that all have ended.
class ProcessTreeTest : public testing::Test {
protected:
    void Start(std::vector<std::wstring> arguments) {
        ASSERT_TRUE(life.Open());
        ASSERT_TRUE(output.Open());
        arguments.push_back(platform::InheritedHandleText(life.WriteEnd()));
        ProcessStart start = TestProcess(arguments);
        start.output = output.WriteEnd();
        start.inherited = {life.WriteEnd()};
        ASSERT_TRUE(tree->Start(start));
        output.CloseWriteEnd();
        life.CloseWriteEnd();
    }

    void AwaitReady() { ASSERT_TRUE(ReadUntil(output, "ready")); }
    /// Returns when all processes of the tree have ended.
    void AwaitDeathOfAll() { EXPECT_EQ(ReadToEnd(life), ""); }

    platform::OutputPipe life;
    platform::OutputPipe output;
    std::unique_ptr<ProcessTree> tree = std::make_unique<ProcessTree>();
};

} // namespace

TEST_F(ProcessTreeTest, TheRootIsWaitedForAndTellsItsExitCode) {
    ASSERT_TRUE(tree->Start(TestProcess({L"exit", L"5"})));
    ASSERT_TRUE(WaitUntilSignalled(tree->Root()));
    EXPECT_EQ(tree->RootExitCode(), 5);
    tree->Kill();
    EXPECT_EQ(tree->RootExitCode(), 5);
}

TEST_F(ProcessTreeTest, ARootThatCannotBeStartedLeavesAnEmptyTree) {
    ProcessStart start;
    start.program = test_support::ProgramPath(L"no_such_program");
    EXPECT_EQ(tree->Start(start).kind, platform::ErrorKind::NotFound);
    EXPECT_EQ(tree->Root(), nullptr);
    EXPECT_EQ(tree->RootExitCode(), std::nullopt);
    tree->RequestStop();
    tree->Kill();
}

/// Few machines offer all limits to a test; what they are set to is tested with the system's own structures.
TEST_F(ProcessTreeTest, ATreeRunsWhetherItsLimitsAreEnforcedOrNot) {
    constexpr std::int64_t gibibyte = std::int64_t{1} << 30;
    std::wstring ignored;
    (void)tree->Limit({gibibyte, 100}, ignored);
    ASSERT_TRUE(tree->Start(TestProcess({L"exit", L"5"})));
    ASSERT_TRUE(WaitUntilSignalled(tree->Root()));
    EXPECT_EQ(tree->RootExitCode(), 5);
    tree->Kill();
    EXPECT_FALSE(tree->HasExceededMemory());
}

TEST_F(ProcessTreeTest, EndKillsTheRoot) {
    Start({L"wait-stubbornly"});
    AwaitReady();
    tree->Kill();
    EXPECT_FALSE(platform::IsProcessRunning(tree->Root()));
    EXPECT_NE(tree->RootExitCode(), std::nullopt);
    EXPECT_NE(tree->RootExitCode(), 0);
    AwaitDeathOfAll();
}

TEST_F(ProcessTreeTest, EndKillsDescendantsThatDetached) {
    Start({L"have-family"});
    AwaitReady();
    tree->Kill();
    AwaitDeathOfAll();
}

TEST_F(ProcessTreeTest, EndKillsWhatTheRootLeftBehind) {
    Start({L"leave-one-behind"});
    ASSERT_TRUE(WaitUntilSignalled(tree->Root()));
    tree->Kill();
    EXPECT_EQ(tree->RootExitCode(), 0);
    AwaitDeathOfAll();
}

TEST_F(ProcessTreeTest, EndKillsProcessesThatKeepMultiplying) {
    Start({L"multiply", L"5"});
    AwaitReady();
    tree->Kill();
    AwaitDeathOfAll();
}

TEST_F(ProcessTreeTest, TheDestructorEndsTheTree) {
    Start({L"have-family"});
    AwaitReady();
    tree.reset();
    AwaitDeathOfAll();
}

TEST_F(ProcessTreeTest, EndMayBeCalledAgain) {
    Start({L"wait"});
    AwaitReady();
    tree->Kill();
    tree->Kill();
    tree->RequestStop();
    AwaitDeathOfAll();
}

TEST_F(ProcessTreeTest, ATreeCanFollowAnother) {
    Start({L"wait"});
    AwaitReady();
    tree = nullptr;
    tree = std::make_unique<ProcessTree>();
    ASSERT_TRUE(tree->Start(TestProcess({L"exit", L"6"})));
    ASSERT_TRUE(WaitUntilSignalled(tree->Root()));
    EXPECT_EQ(tree->RootExitCode(), 6);
}
