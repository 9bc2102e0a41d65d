#include "platform/files/FileLock.h"

#include <gtest/gtest.h>

#include "kit/TemporaryDirectory.h"
#include "platform/files/FileSystem.h"

namespace {

using platform::FileLock;

TEST(FileLockPlaceTest, ALockWhoseFileWasRemovedIsOutOfPlace) {
    const TemporaryDirectory directory;
    FileLock lock;
    ASSERT_TRUE(lock.Take(directory / L"host.lock"));
    EXPECT_TRUE(lock.IsInPlace());
    ASSERT_TRUE(platform::RemoveFile(directory / L"host.lock"));
    EXPECT_FALSE(lock.IsInPlace());
}

TEST(FileLockPlaceTest, RemovingALockOutOfPlaceLeavesTheFileOfItsSuccessor) {
    const TemporaryDirectory directory;
    FileLock lock;
    ASSERT_TRUE(lock.Take(directory / L"host.lock"));
    ASSERT_TRUE(platform::RemoveFile(directory / L"host.lock"));
    FileLock successor;
    ASSERT_TRUE(successor.Take(directory / L"host.lock"));
    EXPECT_FALSE(lock.IsInPlace());
    lock.Remove();
    EXPECT_TRUE(successor.IsInPlace());
}

} // namespace
