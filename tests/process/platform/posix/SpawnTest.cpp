#include <csignal>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <pthread.h>
#include <unistd.h>

#include "kit/TemporaryDirectory.h"
#include "kit/TestProcess.h"
#include "platform/processes/ProcessTree.h"
#include "platform/system/posix/Descriptor.h"

using platform::OwnedHandle;
using platform::ProcessTree;
using test_support::RunToEnd;
using test_support::TestProcess;
using test_support::WaitUntilSignalled;

namespace {

constexpr int killedBase = 128;

/// Starts a process in a tree that prints "ready" and waits; returns when it waits.
void StartWaiting(ProcessTree& tree, const std::wstring& command) {
    platform::OutputPipe output;
    ASSERT_TRUE(output.Open());
    platform::ProcessStart start = TestProcess({command});
    start.output = output.WriteEnd();
    ASSERT_TRUE(tree.Start(start));
    output.CloseWriteEnd();
    ASSERT_TRUE(test_support::ReadUntil(output, "ready"));
}

} // namespace

TEST(SpawnTest, ADescriptorThatNobodyMarkedIsNotInherited) {
    const OwnedHandle unmarked(platform::HandleOf(open("/dev/null", O_RDONLY)));
    ASSERT_TRUE(unmarked);
    const auto start = TestProcess({L"print-is-open", platform::InheritedHandleText(unmarked.Get())});
    EXPECT_EQ(RunToEnd(start).output, "closed\n");
}

TEST(SpawnTest, DescriptorsBelowAnInheritedOneAreClosed) {
    const OwnedHandle unmarked(platform::HandleOf(open("/dev/null", O_RDONLY)));
    const OwnedHandle inherited(platform::HandleOf(open("/dev/null", O_RDONLY)));
    auto start = TestProcess({L"print-is-open", platform::InheritedHandleText(unmarked.Get())});
    start.inherited = {inherited.Get()};
    EXPECT_EQ(RunToEnd(start).output, "closed\n");
}

TEST(SpawnTest, AskingToStopEndsAProcessThatDoesNotMind) {
    ProcessTree tree;
    StartWaiting(tree, L"wait");
    tree.RequestStop();
    ASSERT_TRUE(WaitUntilSignalled(tree.Root()));
    EXPECT_EQ(tree.RootExitCode(), killedBase + SIGTERM);
}

TEST(SpawnTest, AskingToStopLeavesTheChoice) {
    ProcessTree tree;
    StartWaiting(tree, L"wait-stubbornly");
    tree.RequestStop();
    EXPECT_EQ(tree.RootExitCode(), std::nullopt);
    tree.Kill();
    EXPECT_EQ(tree.RootExitCode(), killedBase + SIGKILL);
}

TEST(SpawnTest, AChildDoesNotInheritBlockedOrIgnoredSignals) {
    sigset_t stop;
    sigset_t before;
    sigemptyset(&stop);
    sigaddset(&stop, SIGTERM);
    ASSERT_EQ(pthread_sigmask(SIG_BLOCK, &stop, &before), 0);
    const auto handlerBefore = std::signal(SIGTERM, SIG_IGN);
    {
        ProcessTree tree;
        StartWaiting(tree, L"wait");
        tree.RequestStop();
        EXPECT_TRUE(WaitUntilSignalled(tree.Root()));
        EXPECT_EQ(tree.RootExitCode(), killedBase + SIGTERM);
    }
    std::signal(SIGTERM, handlerBefore);
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

TEST(SpawnTest, ADetachedProcessLeavesTheSession) {
    platform::ProcessStart start = TestProcess({L"wait"});
    start.detached = true;
    OwnedHandle process;
    ASSERT_TRUE(platform::StartProcess(start, process));
    const auto number = static_cast<pid_t>(platform::ProcessNumber(process.Get()));
    EXPECT_EQ(getsid(number), number);
    kill(number, SIGKILL);
    EXPECT_TRUE(WaitUntilSignalled(process.Get()));
}

TEST(SpawnTest, AFileThatMayNotBeExecutedIsRefused) {
    const TemporaryDirectory directory;
    WriteTextFile(directory / L"program", "");
    platform::ProcessStart start;
    start.program = directory / L"program";
    OwnedHandle process;
    EXPECT_EQ(platform::StartProcess(start, process).kind, platform::ErrorKind::AccessDenied);
}

TEST(SpawnTest, AClosedHandleReapsItsChild) {
    OwnedHandle process;
    ASSERT_TRUE(platform::StartProcess(TestProcess({L"exit", L"0"}), process));
    const auto number = static_cast<pid_t>(platform::ProcessNumber(process.Get()));
    ASSERT_TRUE(WaitUntilSignalled(process.Get()));
    EXPECT_EQ(kill(number, 0), 0);
    process.Reset();
    EXPECT_NE(kill(number, 0), 0);
}

TEST(SpawnTest, TheExitCodeOfASignalNamesIt) {
    EXPECT_EQ(platform::ExitCodeText(killedBase + SIGKILL), L"exit code 137 (signal 9, Killed)");
    EXPECT_EQ(platform::ExitCodeText(255), L"exit code 255");
}
