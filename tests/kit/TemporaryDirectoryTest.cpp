#include "kit/TemporaryDirectory.h"

#include <stdexcept>

#include <gtest/gtest.h>

#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"

namespace {

TEST(TemporaryDirectoryTest, StandsUntilItsEndAndLeavesNothing) {
    std::wstring path;
    {
        const TemporaryDirectory directory;
        path = directory.Path();
        EXPECT_TRUE(platform::IsAbsolute(path));
        EXPECT_TRUE(platform::IsDirectory(path));
        WriteTextFile(directory / L"a\\b.txt", "text");
        EXPECT_EQ(ReadTextFile(directory / L"a\\b.txt"), "text");
    }
    EXPECT_FALSE(platform::Exists(path));
}

TEST(TemporaryDirectoryTest, ReadingWhatIsNotThereThrows) {
    const TemporaryDirectory directory;
    EXPECT_THROW(ReadTextFile(directory / L"missing"), std::runtime_error);
}

} // namespace
