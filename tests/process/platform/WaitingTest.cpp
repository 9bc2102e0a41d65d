#include "platform/processes/Waiting.h"

#include <thread>

#include <gtest/gtest.h>

#include "kit/Deadline.h"
#include "kit/TemporaryDirectory.h"
#include "kit/TestProcess.h"
#include "platform/files/FileSystem.h"
#include "platform/processes/Process.h"

using platform::DirectoryWatch;
using platform::Event;
using platform::WaitForAny;
using std::chrono::milliseconds;
using test_support::timeout;

TEST(WaitingTest, NothingSignalledGivesNothingWhenTheTimeIsOver) {
    const Event event;
    EXPECT_EQ(WaitForAny({event.Handle()}, milliseconds(0)), std::nullopt);
    EXPECT_EQ(WaitForAny({event.Handle()}, milliseconds(1)), std::nullopt);
    EXPECT_EQ(WaitForAny({}, milliseconds(1)), std::nullopt);
}

TEST(WaitingTest, TheFirstSignalledOneIsNamed) {
    Event first;
    Event second;
    Event third;
    third.Raise();
    second.Raise();
    EXPECT_EQ(WaitForAny({first.Handle(), second.Handle(), third.Handle()}, std::nullopt), 1U);
    second.Clear();
    EXPECT_EQ(WaitForAny({first.Handle(), second.Handle(), third.Handle()}, std::nullopt), 2U);
}

TEST(WaitingTest, AsManyHandlesAsItSaysAreWaitedFor) {
    std::vector<Event> events(static_cast<std::size_t>(platform::mostWaitedProcesses));
    std::vector<void*> handles;
    for (const Event& event : events) {
        handles.push_back(event.Handle());
    }
    EXPECT_EQ(WaitForAny(handles, milliseconds(0)), std::nullopt);
    events.back().Raise();
    EXPECT_EQ(WaitForAny(handles, std::nullopt), handles.size() - 1);
}

TEST(WaitingTest, AnEventStaysRaisedUntilItIsCleared) {
    Event event;
    event.Raise();
    event.Raise();
    EXPECT_EQ(WaitForAny({event.Handle()}, milliseconds(0)), 0U);
    EXPECT_EQ(WaitForAny({event.Handle()}, milliseconds(0)), 0U);
    event.Clear();
    EXPECT_EQ(WaitForAny({event.Handle()}, milliseconds(0)), std::nullopt);
    event.Clear();
}

TEST(WaitingTest, AnotherThreadCanRaise) {
    Event event;
    std::thread other([&event] { event.Raise(); });
    EXPECT_EQ(WaitForAny({event.Handle()}, timeout), 0U);
    other.join();
}

TEST(WaitingTest, AProcessThatEndsIsSignalled) {
    const Event never;
    platform::OwnedHandle process;
    ASSERT_TRUE(platform::StartProcess(test_support::TestProcess({L"exit", L"0"}), process));
    EXPECT_EQ(WaitForAny({never.Handle(), process.Get()}, timeout), 1U);
}

TEST(WaitingTest, AHandleThatIsNotOpenCountsAsSignalled) {
    const Event event;
    EXPECT_EQ(WaitForAny({event.Handle(), reinterpret_cast<void*>(std::intptr_t{0x7ffffff0})}, timeout), 1U);
}

TEST(WaitingTest_DirectoryWatch, ANewFileIsNoticed) {
    const TemporaryDirectory directory;
    DirectoryWatch watch(directory.Path());
    ASSERT_NE(watch.Handle(), nullptr);
    EXPECT_EQ(WaitForAny({watch.Handle()}, milliseconds(0)), std::nullopt);
    ASSERT_TRUE(platform::CreateEmptyFile(directory / L"killprocess"));
    EXPECT_EQ(WaitForAny({watch.Handle()}, timeout), 0U);
}

TEST(WaitingTest_DirectoryWatch, EachChangeAfterRearmingIsNoticed) {
    const TemporaryDirectory directory;
    DirectoryWatch watch(directory.Path());
    ASSERT_TRUE(platform::CreateEmptyFile(directory / L"a"));
    ASSERT_EQ(WaitForAny({watch.Handle()}, timeout), 0U);
    watch.Rearm();
    ASSERT_TRUE(platform::RenameFile(directory / L"a", directory / L"b"));
    ASSERT_EQ(WaitForAny({watch.Handle()}, timeout), 0U);
    watch.Rearm();
    ASSERT_TRUE(platform::RemoveFile(directory / L"b"));
    EXPECT_EQ(WaitForAny({watch.Handle()}, timeout), 0U);
}

TEST(WaitingTest_DirectoryWatch, ADirectoryThatIsMissingCannotBeWatched) {
    const TemporaryDirectory directory;
    DirectoryWatch watch(directory / L"missing");
    EXPECT_EQ(watch.Handle(), nullptr);
    watch.Rearm();
}
