#include "platform/files/File.h"

#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "kit/SystemHelpers.h"
#include "kit/TemporaryDirectory.h"
#include "platform/files/FileSystem.h"

namespace {

std::string BytesAt(const platform::File& file, std::uint64_t offset, std::size_t capacity) {
    std::string bytes(capacity, '?');
    std::size_t count = 0;
    EXPECT_TRUE(file.ReadAt(offset, bytes.data(), capacity, count));
    return bytes.substr(0, count);
}

} // namespace

TEST(FileTest, ReadsAtAnyPlace) {
    const TemporaryDirectory directory;
    WriteTextFile(directory / L"a.txt", "0123456789");
    platform::File file;
    ASSERT_TRUE(file.OpenForReading(directory / L"a.txt"));
    EXPECT_EQ(BytesAt(file, 7, 2), "78");
    EXPECT_EQ(BytesAt(file, 0, 3), "012");
    EXPECT_EQ(BytesAt(file, 8, 100), "89");
    EXPECT_EQ(BytesAt(file, 10, 1), "");
    EXPECT_EQ(BytesAt(file, std::uint64_t{1} << 40, 1), "");
}

TEST(FileTest, OpeningTellsTheSize) {
    const TemporaryDirectory directory;
    WriteTextFile(directory / L"a.txt", "0123456789");
    std::uint64_t size = 0;
    platform::File file;
    EXPECT_TRUE(file.OpenForReading(directory / L"a.txt", &size));
    EXPECT_EQ(size, 10u);
    EXPECT_EQ(file.Size(), 10u);
}

TEST(FileTest, OpeningWhatIsNoFileTellsNoSize) {
    const TemporaryDirectory directory;
    std::uint64_t size = 7;
    EXPECT_FALSE(platform::File().OpenForReading(directory.Path(), &size));
    EXPECT_FALSE(platform::File().OpenForReading(directory / L"missing", &size));
    EXPECT_EQ(size, 7u);
}

TEST(FileTest, MakesAFileExecutableAndLeavesItsContentAlone) {
    const TemporaryDirectory directory;
    platform::File file;
    ASSERT_TRUE(file.CreateNew(directory / L"tool", {}));
    EXPECT_TRUE(file.Write("#!/bin/sh\n"));
    EXPECT_TRUE(file.MakeExecutable());
    file.Close();
    EXPECT_EQ(ReadTextFile(directory / L"tool"), "#!/bin/sh\n");
}

namespace {

using platform::AppendTo;
using platform::ErrorKind;
using platform::File;

class FileTest_Append : public testing::Test {
protected:
    TemporaryDirectory directory;
    const std::wstring path = directory / L"controller.log";
};

TEST_F(FileTest_Append, AppendsToWhatIsThere) {
    WriteTextFile(path, "old\r\n");
    File file;
    ASSERT_TRUE(file.OpenForAppending(path, false));
    EXPECT_EQ(file.Size(), 5u);
    EXPECT_TRUE(file.Write("new\n"));
    EXPECT_TRUE(file.Write(""));
    EXPECT_EQ(file.Size(), 9u);
    EXPECT_EQ(ReadTextFile(path), "old\r\nnew\n");
}

TEST_F(FileTest_Append, CreatesTheFileOrDropsItsContent) {
    File file;
    ASSERT_TRUE(file.OpenForAppending(path, true));
    EXPECT_TRUE(file.Write("first"));
    ASSERT_TRUE(file.OpenForAppending(path, true));
    EXPECT_EQ(file.Size(), 0u);
    EXPECT_TRUE(file.Write("second"));
    EXPECT_EQ(ReadTextFile(path), "second");
}

TEST_F(FileTest_Append, TwoWritersDoNotOverwriteEachOther) {
    File left;
    File right;
    ASSERT_TRUE(left.OpenForAppending(path, false));
    ASSERT_TRUE(right.OpenForAppending(path, false));
    EXPECT_TRUE(left.Write("a"));
    EXPECT_TRUE(right.Write("b"));
    EXPECT_TRUE(left.Write("c"));
    EXPECT_EQ(ReadTextFile(path), "abc");
}

TEST_F(FileTest_Append, TheFileCanBeRenamedWhileItIsOpen) {
    File file;
    ASSERT_TRUE(file.OpenForAppending(path, false));
    EXPECT_TRUE(file.Write("a"));
    EXPECT_TRUE(platform::RenameFile(path, directory / L"controller.1.log"));
    EXPECT_TRUE(file.Write("b"));
    EXPECT_EQ(ReadTextFile(directory / L"controller.1.log"), "ab");
}

TEST_F(FileTest_Append, WithoutAFileThereIsNothing) {
    File file;
    EXPECT_FALSE(file.IsOpen());
    EXPECT_EQ(file.Size(), 0u);
    EXPECT_FALSE(file.Write("x"));
    EXPECT_EQ(file.OpenForAppending(directory / L"missing\\file", false).kind, ErrorKind::NotFound);
    EXPECT_FALSE(file.IsOpen());
}

TEST_F(FileTest_Append, ALinkInPlaceOfARegularFileIsRefused) {
    WriteTextFile(directory / L"precious", "content");
    if (!MakeLink(directory / L"precious", path)) {
        GTEST_SKIP() << "no symbolic links here";
    }
    File file;
    EXPECT_EQ(file.OpenForAppending(path, true, AppendTo::RegularFile).kind, ErrorKind::NotSupported);
    EXPECT_FALSE(file.IsOpen());
    EXPECT_EQ(ReadTextFile(directory / L"precious"), "content");
    EXPECT_TRUE(file.OpenForAppending(path, true, AppendTo::FileOrDevice));
    EXPECT_EQ(ReadTextFile(directory / L"precious"), "");
}

TEST_F(FileTest_Append, ANamedPipeInPlaceOfAFileIsRefusedWithoutWaiting) {
    if (!MakeNamedPipe(path)) {
        GTEST_SKIP() << "no named pipes among the files here";
    }
    File file;
    EXPECT_EQ(file.OpenForAppending(path, true, AppendTo::RegularFile).kind, ErrorKind::NotSupported);
    EXPECT_EQ(file.OpenForAppending(path, false, AppendTo::FileOrDevice).kind, ErrorKind::NotSupported);
    platform::File reader;
    EXPECT_EQ(reader.OpenForReading(path).kind, ErrorKind::NotSupported);
}

TEST_F(FileTest_Append, MovingHandsTheFileOver) {
    File first;
    ASSERT_TRUE(first.OpenForAppending(path, false));
    File second = std::move(first);
    EXPECT_TRUE(second.Write("a"));
    File third;
    third = std::move(second);
    EXPECT_TRUE(third.Write("b"));
    third.Close();
    EXPECT_FALSE(third.IsOpen());
    EXPECT_EQ(ReadTextFile(path), "ab");
}

} // namespace
