#include "platform/files/FileSystem.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "kit/TemporaryDirectory.h"
#include "platform/files/Directory.h"
#include "platform/files/File.h"

namespace {

using platform::ErrorKind;
using platform::Reading;

class FileBlocksTest : public testing::Test {
protected:
    platform::Error Read() {
        return platform::ReadFileInBlocks(path, [&](std::string_view block) {
            content += block;
            blocks.push_back(block.size());
            return Reading::GoOn;
        });
    }

    const TemporaryDirectory directory;
    const std::wstring path = directory / L"large";
    std::string content;
    std::vector<std::size_t> blocks;
};

TEST_F(FileBlocksTest, AFileOfAnySizeArrivesWholeAndInOrder) {
    constexpr std::size_t mebibyte = std::size_t{1} << 20;
    for (const std::size_t size : {std::size_t{0}, std::size_t{1}, mebibyte - 1, mebibyte, 2 * mebibyte + 7}) {
        std::string written(size, 'x');
        for (std::size_t index = 0; index < size; index += 1000) {
            written[index] = static_cast<char>(index / 1000);
        }
        WriteTextFile(path, written);
        content.clear();
        ASSERT_TRUE(Read()) << size;
        EXPECT_TRUE(content == written) << size;
    }
    EXPECT_EQ(*std::max_element(blocks.begin(), blocks.end()), mebibyte);
}

TEST_F(FileBlocksTest, TheReaderMayStop) {
    WriteTextFile(path, std::string(std::size_t{3} << 20, 'x'));
    int count = 0;
    EXPECT_TRUE(platform::ReadFileInBlocks(path, [&](std::string_view) {
        ++count;
        return Reading::Stop;
    }));
    EXPECT_EQ(count, 1);
}

TEST_F(FileBlocksTest, OnlyFilesAreRead) {
    ASSERT_TRUE(platform::CreateNewDirectory(path));
    EXPECT_EQ(Read().kind, ErrorKind::NotSupported);
    EXPECT_EQ(platform::ReadFileInBlocks(directory / L"missing", {}).kind, ErrorKind::NotFound);
}

TEST_F(FileBlocksTest, AFileThatGrowsMeanwhileIsReported) {
    WriteTextFile(path, std::string(100, 'x'));
    const platform::Error result = platform::ReadFileInBlocks(path, [&](std::string_view) {
        platform::File writer;
        EXPECT_TRUE(writer.OpenForAppending(path, false));
        EXPECT_TRUE(writer.Write("y"));
        return Reading::GoOn;
    });
    EXPECT_EQ(result.kind, ErrorKind::InUse);
}

} // namespace
