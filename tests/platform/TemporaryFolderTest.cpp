#include "support/TemporaryFolder.h"

#include <stdexcept>

#include <gtest/gtest.h>

#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"

namespace {

TEST(TemporaryFolderTest, StandsUntilItsEndAndLeavesNothing) {
    std::wstring path;
    {
        const TemporaryFolder folder;
        path = folder.Path();
        EXPECT_TRUE(platform::IsAbsolute(path));
        EXPECT_TRUE(platform::IsFolder(path));
        WriteTextFile(folder / L"a\\b.txt", "text");
        EXPECT_EQ(ReadTextFile(folder / L"a\\b.txt"), "text");
    }
    EXPECT_FALSE(platform::Exists(path));
}

TEST(TemporaryFolderTest, ReadingWhatIsNotThereThrows) {
    const TemporaryFolder folder;
    EXPECT_THROW(ReadTextFile(folder / L"missing"), std::runtime_error);
}

} // namespace
