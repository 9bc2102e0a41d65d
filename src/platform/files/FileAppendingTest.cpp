#include "platform/files/File.h"

#include <utility>

#include <gtest/gtest.h>

#include "kit/SystemHelpers.h"
#include "kit/TemporaryDirectory.h"
#include "platform/files/FileSystem.h"

namespace {

using platform::AppendTo;
using platform::ErrorKind;
using platform::File;

class FileAppendingTest : public testing::Test {
protected:
    TemporaryDirectory directory;
    const std::wstring path = directory / L"controller.log";
};

TEST_F(FileAppendingTest, AppendsToWhatIsThere) {
    WriteTextFile(path, "old\r\n");
    File file;
    ASSERT_FALSE(file.OpenForAppending(path, false));
    EXPECT_EQ(file.Size(), 5u);
    EXPECT_FALSE(file.Write("new\n"));
    EXPECT_FALSE(file.Write(""));
    EXPECT_EQ(file.Size(), 9u);
    EXPECT_EQ(ReadTextFile(path), "old\r\nnew\n");
}

TEST_F(FileAppendingTest, CreatesTheFileOrDropsItsContent) {
    File file;
    ASSERT_FALSE(file.OpenForAppending(path, true));
    EXPECT_FALSE(file.Write("first"));
    ASSERT_FALSE(file.OpenForAppending(path, true));
    EXPECT_EQ(file.Size(), 0u);
    EXPECT_FALSE(file.Write("second"));
    EXPECT_EQ(ReadTextFile(path), "second");
}

TEST_F(FileAppendingTest, TwoWritersDoNotOverwriteEachOther) {
    File left;
    File right;
    ASSERT_FALSE(left.OpenForAppending(path, false));
    ASSERT_FALSE(right.OpenForAppending(path, false));
    EXPECT_FALSE(left.Write("a"));
    EXPECT_FALSE(right.Write("b"));
    EXPECT_FALSE(left.Write("c"));
    EXPECT_EQ(ReadTextFile(path), "abc");
}

TEST_F(FileAppendingTest, TheFileCanBeRenamedWhileItIsOpen) {
    File file;
    ASSERT_FALSE(file.OpenForAppending(path, false));
    EXPECT_FALSE(file.Write("a"));
    EXPECT_FALSE(platform::RenameFile(path, directory / L"controller.1.log"));
    EXPECT_FALSE(file.Write("b"));
    EXPECT_EQ(ReadTextFile(directory / L"controller.1.log"), "ab");
}

TEST_F(FileAppendingTest, WithoutAFileThereIsNothing) {
    File file;
    EXPECT_FALSE(file.IsOpen());
    EXPECT_EQ(file.Size(), 0u);
    EXPECT_TRUE(file.Write("x"));
    EXPECT_EQ(file.OpenForAppending(directory / L"missing\\file", false).kind, ErrorKind::NotFound);
    EXPECT_FALSE(file.IsOpen());
}

TEST_F(FileAppendingTest, ALinkInPlaceOfARegularFileIsRefused) {
    WriteTextFile(directory / L"precious", "content");
    if (!MakeLink(directory / L"precious", path)) {
        GTEST_SKIP() << "no symbolic links here";
    }
    File file;
    EXPECT_EQ(file.OpenForAppending(path, true, AppendTo::RegularFile).kind, ErrorKind::NotSupported);
    EXPECT_FALSE(file.IsOpen());
    EXPECT_EQ(ReadTextFile(directory / L"precious"), "content");
    EXPECT_FALSE(file.OpenForAppending(path, true, AppendTo::FileOrDevice));
    EXPECT_EQ(ReadTextFile(directory / L"precious"), "");
}

TEST_F(FileAppendingTest, ANamedPipeInPlaceOfAFileIsRefusedWithoutWaiting) {
    if (!MakeNamedPipe(path)) {
        GTEST_SKIP() << "no named pipes among the files here";
    }
    File file;
    EXPECT_EQ(file.OpenForAppending(path, true, AppendTo::RegularFile).kind, ErrorKind::NotSupported);
    EXPECT_EQ(file.OpenForAppending(path, false, AppendTo::FileOrDevice).kind, ErrorKind::NotSupported);
    platform::File reader;
    EXPECT_EQ(reader.OpenForReading(path).kind, ErrorKind::NotSupported);
}

TEST_F(FileAppendingTest, MovingHandsTheFileOver) {
    File first;
    ASSERT_FALSE(first.OpenForAppending(path, false));
    File second = std::move(first);
    EXPECT_FALSE(second.Write("a"));
    File third;
    third = std::move(second);
    EXPECT_FALSE(third.Write("b"));
    third.Close();
    EXPECT_FALSE(third.IsOpen());
    EXPECT_EQ(ReadTextFile(path), "ab");
}

} // namespace
