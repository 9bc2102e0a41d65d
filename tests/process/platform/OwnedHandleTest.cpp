#include "platform/system/OwnedHandle.h"

#include <cstdint>
#include <optional>
#include <utility>

#include <gtest/gtest.h>

#include "kit/TemporaryDirectory.h"
#include "platform/files/File.h"
#include "platform/processes/Process.h"
#include "platform/processes/Waiting.h"

using platform::Event;
using platform::IsProcessRunning;
using platform::OwnedHandle;

TEST(OwnedHandleTest, NullDoesNotRunAndIsNothingToClose) {
    EXPECT_FALSE(IsProcessRunning(nullptr));
    platform::CloseProcessHandle(nullptr);
    platform::CloseFileHandle(nullptr);
}

TEST(OwnedHandleTest, WhatIsNoHandleDoesNotRun) {
    EXPECT_FALSE(IsProcessRunning(reinterpret_cast<void*>(std::intptr_t{-4})));
    EXPECT_FALSE(IsProcessRunning(reinterpret_cast<void*>(std::intptr_t{0x7ffffff0})));
    EXPECT_FALSE(IsProcessRunning(reinterpret_cast<void*>(std::intptr_t{0x7ffffffffffff0})));
}

TEST(OwnedHandleTest, AnythingThatIsNotSignalledCountsAsRunning) {
    Event event;
    EXPECT_TRUE(IsProcessRunning(event.Handle()));
    event.Raise();
    EXPECT_FALSE(IsProcessRunning(event.Handle()));
}

TEST(OwnedHandleTest, AnOwnerGivesItsHandleAway) {
    const OwnedHandle none;
    EXPECT_FALSE(none);
    OwnedHandle first = platform::OpenSelf();
    void* const handle = first.Get();
    OwnedHandle second = std::move(first);
    EXPECT_EQ(second.Get(), handle);
    EXPECT_TRUE(IsProcessRunning(second.Get()));
    second.Reset();
    EXPECT_FALSE(second);
}

TEST(OwnedHandleTest, ACopyLivesOnItsOwn) {
    platform::Event event;
    const OwnedHandle copy(platform::CopyHandle(event.Handle()));
    ASSERT_TRUE(copy);
    EXPECT_NE(copy.Get(), event.Handle());
    event.Raise();
    { const platform::Event gone = std::move(event); }
    EXPECT_FALSE(IsProcessRunning(copy.Get()));
    EXPECT_EQ(platform::CopyHandle(nullptr), nullptr);
    EXPECT_EQ(platform::CopyHandle(reinterpret_cast<void*>(std::intptr_t{0x7ffffff0})), nullptr);
}

TEST(OwnedHandleTest, ClosingKeepsTheErrorOfAnEarlierFailure) {
    std::optional<Event> event(std::in_place);
    EXPECT_EQ(platform::File().OpenForReading(L"missing").kind, platform::ErrorKind::NotFound);
    event.reset();
    EXPECT_EQ(platform::LastError().kind, platform::ErrorKind::NotFound);
}

TEST(OwnedHandleTest, ClosingAFileKeepsTheErrorOfAnEarlierFailure) {
    const TemporaryDirectory directory;
    WriteTextFile(directory / L"a.txt", "");
    platform::File file;
    ASSERT_TRUE(file.OpenForReading(directory / L"a.txt"));
    EXPECT_EQ(platform::File().OpenForReading(L"missing").kind, platform::ErrorKind::NotFound);
    file.Close();
    EXPECT_EQ(platform::LastError().kind, platform::ErrorKind::NotFound);
}
