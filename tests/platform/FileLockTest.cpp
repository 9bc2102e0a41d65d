#include "platform/FileLock.h"

#include <utility>

#include <gtest/gtest.h>

#include "support/TemporaryFolder.h"

namespace {

using platform::ErrorKind;
using platform::FileLock;

TEST(FileLockTest, ASecondTakerIsToldThatItIsInUse) {
    const TemporaryFolder folder;
    FileLock first;
    FileLock second;
    EXPECT_EQ(first.Take(folder / L"host.lock").kind, ErrorKind::None);
    EXPECT_EQ(second.Take(folder / L"host.lock").kind, ErrorKind::InUse);
    EXPECT_FALSE(second.IsHeld());
}

TEST(FileLockTest, AFileThatWasLeftBehindIsNoLock) {
    const TemporaryFolder folder;
    WriteTextFile(folder / L"host.lock", "4711");
    FileLock lock;
    EXPECT_EQ(lock.Take(folder / L"host.lock").kind, ErrorKind::None);
    EXPECT_TRUE(lock.IsHeld());
}

TEST(FileLockTest, ItCanBeTakenAgainOnceReleased) {
    const TemporaryFolder folder;
    FileLock first;
    FileLock second;
    first.Take(folder / L"host.lock");
    first.Release();
    EXPECT_EQ(second.Take(folder / L"host.lock").kind, ErrorKind::None);
}

TEST(FileLockTest, MovingHandsItOn) {
    const TemporaryFolder folder;
    FileLock first;
    first.Take(folder / L"host.lock");
    const FileLock second = std::move(first);
    FileLock third;
    EXPECT_TRUE(second.IsHeld());
    EXPECT_EQ(third.Take(folder / L"host.lock").kind, ErrorKind::InUse);
}

TEST(FileLockTest, AFolderThatIsMissingIsAnError) {
    const TemporaryFolder folder;
    FileLock lock;
    EXPECT_EQ(lock.Take(folder / L"nowhere\\host.lock").kind, ErrorKind::NotFound);
}

} // namespace
