#include "platform/files/FileLock.h"

#include <gtest/gtest.h>

#include "platform/files/FileSystem.h"
#include "support/TemporaryFolder.h"

namespace {

using platform::FileLock;

TEST(FileLockPlaceTest, ALockWhoseFileWasRemovedIsOutOfPlace) {
    const TemporaryFolder folder;
    FileLock lock;
    ASSERT_FALSE(lock.Take(folder / L"host.lock"));
    EXPECT_TRUE(lock.IsInPlace());
    ASSERT_FALSE(platform::RemoveFile(folder / L"host.lock"));
    EXPECT_FALSE(lock.IsInPlace());
}

TEST(FileLockPlaceTest, RemovingALockOutOfPlaceLeavesTheFileOfItsSuccessor) {
    const TemporaryFolder folder;
    FileLock lock;
    ASSERT_FALSE(lock.Take(folder / L"host.lock"));
    ASSERT_FALSE(platform::RemoveFile(folder / L"host.lock"));
    FileLock successor;
    ASSERT_FALSE(successor.Take(folder / L"host.lock"));
    EXPECT_FALSE(lock.IsInPlace());
    lock.Remove();
    EXPECT_TRUE(successor.IsInPlace());
}

} // namespace
