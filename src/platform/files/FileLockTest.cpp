#include "platform/files/FileLock.h"

#include <atomic>
#include <future>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "kit/TemporaryDirectory.h"
#include "platform/files/FileSystem.h"

namespace {

using platform::ErrorKind;
using platform::FileLock;

TEST(FileLockTest, ASecondTakerIsToldThatItIsInUse) {
    const TemporaryDirectory directory;
    FileLock first;
    FileLock second;
    EXPECT_EQ(first.Take(directory / L"host.lock").kind, ErrorKind::None);
    EXPECT_EQ(second.Take(directory / L"host.lock").kind, ErrorKind::InUse);
    EXPECT_FALSE(second.IsHeld());
}

TEST(FileLockTest, AFileThatWasLeftBehindIsNoLock) {
    const TemporaryDirectory directory;
    WriteTextFile(directory / L"host.lock", "4711");
    FileLock lock;
    EXPECT_EQ(lock.Take(directory / L"host.lock").kind, ErrorKind::None);
    EXPECT_TRUE(lock.IsHeld());
}

TEST(FileLockTest, ItCanBeTakenAgainOnceReleased) {
    const TemporaryDirectory directory;
    FileLock first;
    FileLock second;
    ASSERT_TRUE(first.Take(directory / L"host.lock"));
    first.Release();
    EXPECT_EQ(second.Take(directory / L"host.lock").kind, ErrorKind::None);
}

TEST(FileLockTest, MovingHandsItOn) {
    const TemporaryDirectory directory;
    FileLock first;
    ASSERT_TRUE(first.Take(directory / L"host.lock"));
    const FileLock second = std::move(first);
    FileLock third;
    EXPECT_TRUE(second.IsHeld());
    EXPECT_EQ(third.Take(directory / L"host.lock").kind, ErrorKind::InUse);
}

TEST(FileLockTest, ADirectoryThatIsMissingIsAnError) {
    const TemporaryDirectory directory;
    FileLock lock;
    EXPECT_EQ(lock.Take(directory / L"nowhere\\host.lock").kind, ErrorKind::NotFound);
}

TEST(FileLockTest, WhetherItIsHeldCanBeAskedWithoutTakingIt) {
    const TemporaryDirectory directory;
    EXPECT_FALSE(platform::IsLocked(directory / L"host.lock"));
    FileLock lock;
    ASSERT_TRUE(lock.Take(directory / L"host.lock"));
    EXPECT_TRUE(platform::IsLocked(directory / L"host.lock"));
    lock.Release();
    EXPECT_FALSE(platform::IsLocked(directory / L"host.lock"));
    EXPECT_TRUE(lock.Take(directory / L"host.lock"));
}

TEST(FileLockTest, OthersReadWhatItsHolderWrote) {
    const TemporaryDirectory directory;
    WriteTextFile(directory / L"host.lock", "the long text of a holder that has died");
    FileLock lock;
    ASSERT_TRUE(lock.Take(directory / L"host.lock"));
    EXPECT_TRUE(lock.Write("first"));
    EXPECT_TRUE(lock.Write("2nd"));
    EXPECT_EQ(ReadTextFile(directory / L"host.lock"), "2nd");
    EXPECT_TRUE(platform::IsLocked(directory / L"host.lock"));
}

TEST(FileLockTest, RemovingItLeavesNoFileAndNoLock) {
    const TemporaryDirectory directory;
    FileLock first;
    ASSERT_TRUE(first.Take(directory / L"host.lock"));
    first.Remove();
    EXPECT_FALSE(first.IsHeld());
    EXPECT_FALSE(platform::Exists(directory / L"host.lock"));
    FileLock second;
    EXPECT_TRUE(second.Take(directory / L"host.lock"));
}

/// Takes the lock `rounds` times in competition; counts how often it was not alone.
int CountCompany(const std::wstring& path, int rounds, std::atomic<int>& holders) {
    int company = 0;
    while (rounds > 0) {
        FileLock lock;
        if (lock.Take(path)) {
            --rounds;
            company += holders.fetch_add(1) == 0 ? 0 : 1;
            holders.fetch_sub(1);
            lock.Remove();
        }
    }
    return company;
}

TEST(FileLockTest, ItIsHeldByOneAtATimeThoughEachRemovesItsFile) {
    const TemporaryDirectory directory;
    std::atomic<int> holders = 0;
    std::vector<std::future<int>> takers;
    for (int taker = 0; taker < 4; ++taker) {
        takers.push_back(std::async(std::launch::async, CountCompany, directory / L"host.lock", 50, std::ref(holders)));
    }
    for (std::future<int>& taker : takers) {
        EXPECT_EQ(taker.get(), 0);
    }
}

} // namespace
