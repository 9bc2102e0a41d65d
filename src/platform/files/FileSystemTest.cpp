#include "platform/files/FileSystem.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "kit/SystemHelpers.h"
#include "kit/TemporaryDirectory.h"
#include "platform/files/Directory.h"
#include "platform/files/NativePath.h"
#include "platform/files/RemoveTree.h"
#include "platform/files/ReplaceFile.h"
#include "platform/system/Clock.h"
#include "text/Text.h"

namespace {

using platform::CreateNewDirectory;
using platform::ErrorKind;
using platform::Exists;
using platform::IdentityOf;
using platform::IsDirectory;
using platform::ReadFile;
using platform::StampOf;

class FileSystemTest : public testing::Test {
protected:
    TemporaryDirectory directory;
};

std::wstring CutByNull(const std::wstring& path) {
    return path + std::wstring(1, L'\0') + L"rest";
}

TEST_F(FileSystemTest, FilesAndDirectoriesExist) {
    WriteTextFile(directory / L"a.txt", "");
    EXPECT_TRUE(Exists(directory.Path()));
    EXPECT_TRUE(Exists(directory.Path() + L"/a.txt"));
    EXPECT_FALSE(Exists(directory / L"b.txt"));
    EXPECT_FALSE(Exists(L""));
    EXPECT_TRUE(IsDirectory(directory.Path()));
    EXPECT_FALSE(IsDirectory(directory / L"a.txt"));
    EXPECT_FALSE(IsDirectory(directory / L"b"));
}

TEST_F(FileSystemTest, AFileThatWasWrittenNowHasTheTimeOfTheClock) {
    const std::int64_t before = platform::Now();
    WriteTextFile(directory / L"a", "x");
    const std::int64_t written = platform::LastWriteTime(*platform::StampOf(directory / L"a"));
    // The clock of a file system may be a little behind.
    EXPECT_GE(written, before - 1);
    EXPECT_LE(written, platform::Now() + 1);
}

TEST_F(FileSystemTest, ALinkIsWhatItLeadsTo) {
    ASSERT_TRUE(CreateNewDirectory(directory / L"real"));
    if (!MakeLink(directory / L"real", directory / L"link")) {
        GTEST_SKIP() << "no symbolic links here";
    }
    ASSERT_TRUE(MakeLink(directory / L"nothing", directory / L"broken"));
    EXPECT_TRUE(IsDirectory(directory / L"link"));
    EXPECT_EQ(IdentityOf(directory / L"link"), IdentityOf(directory / L"real"));
    EXPECT_FALSE(Exists(directory / L"broken"));
}

TEST_F(FileSystemTest, APathWithAnEmbeddedNullNamesNothing) {
    WriteTextFile(directory / L"a.txt", "old");
    const std::wstring cut = CutByNull(directory / L"a.txt");
    std::string bytes;
    EXPECT_FALSE(Exists(cut));
    EXPECT_FALSE(IsDirectory(CutByNull(directory.Path())));
    EXPECT_FALSE(IdentityOf(cut).has_value());
    EXPECT_FALSE(StampOf(cut).has_value());
    EXPECT_EQ(ReadFile(cut, 100, bytes).kind, ErrorKind::NotFound);
    EXPECT_EQ(platform::ReplaceFile(cut, "new").kind, ErrorKind::NotFound);
    EXPECT_EQ(platform::CreateEmptyFile(cut).kind, ErrorKind::NotFound);
    EXPECT_EQ(platform::RenameFile(cut, directory / L"b").kind, ErrorKind::NotFound);
    EXPECT_EQ(platform::RenameFile(directory / L"a.txt", CutByNull(directory / L"b")).kind, ErrorKind::NotFound);
    EXPECT_EQ(platform::RemoveFile(cut).kind, ErrorKind::NotFound);
    EXPECT_EQ(platform::RemoveTree(CutByNull(directory.Path())).kind, ErrorKind::NotFound);
    EXPECT_EQ(CreateNewDirectory(CutByNull(directory / L"new") + L"\\sub").kind, ErrorKind::NotFound);
    EXPECT_FALSE(Exists(directory / L"new"));
    EXPECT_EQ(ReadTextFile(directory / L"a.txt"), "old");
}

TEST_F(FileSystemTest, AnEmptyFileReplacesALinkAndLeavesAloneWhatItLeadsTo) {
    WriteTextFile(directory / L"precious", "content");
    if (!MakeLink(directory / L"precious", directory / L"link")) {
        GTEST_SKIP() << "no symbolic links here";
    }
    ASSERT_TRUE(MakeLink(directory / L"nothing", directory / L"broken"));
    for (const std::wstring& path : {directory / L"link", directory / L"broken"}) {
        EXPECT_TRUE(platform::CreateEmptyFile(path));
        EXPECT_FALSE(platform::IsLink(path));
        EXPECT_EQ(ReadTextFile(path), "");
    }
    EXPECT_EQ(ReadTextFile(directory / L"precious"), "content");
    EXPECT_FALSE(Exists(directory / L"nothing"));
}

TEST_F(FileSystemTest, AnEmptyFileReplacesAHardLinkAndLeavesTheFileAlone) {
    WriteTextFile(directory / L"precious", "content");
    ASSERT_TRUE(platform::LinkFile(directory / L"precious", directory / L"link"));
    EXPECT_TRUE(platform::CreateEmptyFile(directory / L"link"));
    EXPECT_EQ(ReadTextFile(directory / L"link"), "");
    EXPECT_EQ(ReadTextFile(directory / L"precious"), "content");
}

TEST_F(FileSystemTest, AnEmptyFileIsMadeInADirectoryButNotThroughALinkToOne) {
    ASSERT_TRUE(platform::EnsureDirectory(directory / L"real"));
    EXPECT_TRUE(platform::CreateEmptyFileIn(directory / L"real", L"file"));
    EXPECT_TRUE(platform::Exists(directory / L"real\\file"));
    EXPECT_EQ(platform::CreateEmptyFileIn(directory / L"missing", L"file").kind, ErrorKind::NotFound);
    if (MakeLink(directory / L"real", directory / L"link")) {
        EXPECT_EQ(platform::CreateEmptyFileIn(directory / L"link", L"other").kind, ErrorKind::NotSupported);
        EXPECT_FALSE(platform::Exists(directory / L"real\\other"));
    }
}

TEST_F(FileSystemTest, AnEmptyFileReplacesANamedPipeWithoutWaitingForItsReader) {
    if (!MakeNamedPipe(directory / L"pipe")) {
        GTEST_SKIP() << "no named pipes among the files here";
    }
    EXPECT_TRUE(platform::CreateEmptyFile(directory / L"pipe"));
    EXPECT_EQ(ReadTextFile(directory / L"pipe"), "");
}

TEST_F(FileSystemTest, PathsLongerThanTheOldLimitOfWindowsWork) {
    std::wstring deep = directory.Path();
    for (int level = 0; level < 20; ++level) {
        deep += L"\\a folder of thirty characters";
    }
    ASSERT_TRUE(CreateNewDirectory(deep));
    ASSERT_TRUE(platform::ReplaceFile(deep + L"\\.\\file.txt", "content"));
    EXPECT_EQ(ReadTextFile(deep + L"/file.txt"), "content");
    std::vector<platform::DirectoryEntry> entries;
    EXPECT_TRUE(platform::ListDirectory(deep, entries));
    ASSERT_EQ(entries.size(), 1u);
    EXPECT_EQ(entries[0].name, L"file.txt");
    EXPECT_TRUE(platform::RenameFile(deep + L"\\file.txt", deep + L"\\other.txt"));
    EXPECT_TRUE(Exists(deep + L"\\other.txt"));
    EXPECT_TRUE(platform::RemoveFile(deep + L"\\other.txt"));
}

TEST_F(FileSystemTest, ExtensionsMatchAsFileNamesDo) {
    EXPECT_TRUE(platform::HasExtension(L"mesh.rb", L".rb"));
    EXPECT_TRUE(platform::HasExtension(L".rb", L".rb"));
    EXPECT_TRUE(platform::HasExtension(L"a.b.rb", L".rb"));
    EXPECT_FALSE(platform::HasExtension(L"rb", L".rb"));
    EXPECT_FALSE(platform::HasExtension(L"mesh.rbx", L".rb"));
    EXPECT_FALSE(platform::HasExtension(L"", L".rb"));
    EXPECT_EQ(platform::HasExtension(L"MESH.RB", L".rb"), OnWindows());
}

TEST_F(FileSystemTest, EveryFileAndDirectoryHasAnIdentity) {
    ASSERT_TRUE(CreateNewDirectory(directory / L"a\\b"));
    WriteTextFile(directory / L"x", "");
    WriteTextFile(directory / L"y", "");
    EXPECT_EQ(IdentityOf(directory / L"a"), IdentityOf(directory / L"a\\b\\.."));
    EXPECT_EQ(IdentityOf(directory / L"x"), IdentityOf(directory / L"x"));
    EXPECT_NE(IdentityOf(directory / L"x"), IdentityOf(directory / L"y"));
    EXPECT_TRUE(IdentityOf(directory / L"x").has_value());
    EXPECT_FALSE(IdentityOf(directory / L"z").has_value());
}

TEST_F(FileSystemTest, TheStampChangesWithTheFile) {
    WriteTextFile(directory / L"settings.json", "one");
    const auto first = StampOf(directory / L"settings.json");
    ASSERT_TRUE(first.has_value());
    EXPECT_EQ(first->size, 3u);
    EXPECT_GT(first->lastWrite, 0);
    EXPECT_EQ(StampOf(directory / L"settings.json"), first);
    WriteTextFile(directory / L"settings.json", "longer");
    EXPECT_NE(StampOf(directory / L"settings.json"), first);
    EXPECT_FALSE(StampOf(directory / L"missing").has_value());
}

TEST_F(FileSystemTest, ReadFileGivesTheWholeContent) {
    const std::string table[] = {"", "text", std::string("a\0b\r\n\x1A\xFF", 7), std::string(300'000, 'x')};
    for (const std::string& content : table) {
        WriteTextFile(directory / L"file", content);
        std::string bytes = "before";
        EXPECT_TRUE(ReadFile(directory / L"file", 1'000'000, bytes));
        EXPECT_EQ(bytes, content);
    }
}

TEST_F(FileSystemTest, ReadFileKeepsToTheLimit) {
    WriteTextFile(directory / L"file", "12345");
    std::string bytes = "before";
    EXPECT_EQ(ReadFile(directory / L"file", 4, bytes).kind, ErrorKind::TooLarge);
    EXPECT_EQ(bytes, "before");
    EXPECT_TRUE(ReadFile(directory / L"file", 5, bytes));
    EXPECT_EQ(bytes, "12345");
}

TEST_F(FileSystemTest, ReadFileReadsRegularFilesOnly) {
    std::string bytes = "before";
    EXPECT_EQ(ReadFile(directory / L"missing", 100, bytes).kind, ErrorKind::NotFound);
    EXPECT_EQ(ReadFile(directory.Path(), 100, bytes).kind, ErrorKind::NotSupported);
    if (MakeNamedPipe(directory / L"pipe")) {
        EXPECT_EQ(ReadFile(directory / L"pipe", 100, bytes).kind, ErrorKind::NotSupported);
    }
    EXPECT_EQ(bytes, "before");
}

TEST_F(FileSystemTest, ReadFileReadsFilesThatDoNotTellTheirSize) {
    if (OnWindows()) {
        GTEST_SKIP() << "every file tells its size here";
    }
    std::string bytes;
    EXPECT_TRUE(ReadFile(L"/proc/self/status", 100'000, bytes));
    EXPECT_NE(bytes.find("VmPeak"), std::string::npos);
    EXPECT_EQ(ReadFile(L"/proc/self/status", 10, bytes).kind, ErrorKind::TooLarge);
}

TEST_F(FileSystemTest, CreateEmptyFileCreatesOrTruncates) {
    WriteTextFile(directory / L"full", "content");
    EXPECT_TRUE(platform::CreateEmptyFile(directory / L"new"));
    EXPECT_TRUE(platform::CreateEmptyFile(directory / L"full"));
    EXPECT_EQ(ReadTextFile(directory / L"new"), "");
    EXPECT_EQ(ReadTextFile(directory / L"full"), "");
    EXPECT_EQ(platform::CreateEmptyFile(directory / L"missing\\file").kind, ErrorKind::NotFound);
}

TEST_F(FileSystemTest, RenameReplacesTheTarget) {
    WriteTextFile(directory / L"from", "new");
    WriteTextFile(directory / L"to", "old");
    EXPECT_TRUE(platform::RenameFile(directory / L"from", directory / L"to"));
    EXPECT_EQ(ReadTextFile(directory / L"to"), "new");
    EXPECT_FALSE(Exists(directory / L"from"));
    EXPECT_EQ(platform::RenameFile(directory / L"from", directory / L"to").kind, ErrorKind::NotFound);
}

TEST_F(FileSystemTest, RemoveFileRemovesALinkItself) {
    WriteTextFile(directory / L"target", "kept");
    EXPECT_EQ(platform::RemoveFile(directory / L"missing").kind, ErrorKind::NotFound);
    if (MakeLink(directory / L"target", directory / L"link")) {
        EXPECT_TRUE(platform::RemoveFile(directory / L"link"));
    }
    EXPECT_EQ(ReadTextFile(directory / L"target"), "kept");
    EXPECT_TRUE(platform::RemoveFile(directory / L"target"));
    EXPECT_FALSE(Exists(directory / L"target"));
}

TEST_F(FileSystemTest, NamesBeyondAsciiWork) {
    const std::wstring name = L"Gr\u00F6\u00DFe \u65E5\u672C";
    WriteTextFile(directory / name, "x");
    EXPECT_TRUE(Exists(directory / name));
    EXPECT_EQ(ReadTextFile(directory / name), "x");
}

using platform::IsReplaceableByOthers;
using platform::IsWorldWritable;

class FileSystemTest_Permissions : public testing::Test {
protected:
    FileSystemTest_Permissions() { WriteTextFile(file, "content"); }

    const TemporaryDirectory directory;
    const std::wstring inner = directory / L"inner";
    const std::wstring file = inner + L"\\settings.json";
};

TEST_F(FileSystemTest_Permissions, WhatAUserMakesIsHisOwn) {
    EXPECT_FALSE(IsWorldWritable(file));
    EXPECT_FALSE(IsReplaceableByOthers(inner));
}

TEST_F(FileSystemTest_Permissions, AFileThatEverybodyMayWriteIsAnybodys) {
    LetEverybodyWrite(file);
    EXPECT_TRUE(IsWorldWritable(file));
}

TEST_F(FileSystemTest_Permissions, AFileInADirectoryThatEverybodyMayWriteIsAnybodys) {
    LetEverybodyWrite(inner);
    EXPECT_TRUE(IsWorldWritable(file));
    EXPECT_TRUE(IsReplaceableByOthers(inner));
}

TEST_F(FileSystemTest_Permissions, WhatIsMissingIsNobodys) {
    EXPECT_FALSE(IsWorldWritable(directory / L"missing"));
    EXPECT_FALSE(IsReplaceableByOthers(directory / L"missing"));
}

TEST_F(FileSystemTest_Permissions, InAStickyDirectoryEverybodyKeepsHisOwn) {
    if (OnWindows()) {
        GTEST_SKIP() << "no sticky folders here";
    }
    SetPermissions(inner, 01777);
    EXPECT_FALSE(IsWorldWritable(file));
    EXPECT_FALSE(IsReplaceableByOthers(inner));
}

TEST_F(FileSystemTest_Permissions, InADirectoryOfAnotherUserNothingIsSafe) {
    if (!GiveAway(inner)) {
        GTEST_SKIP() << "only root can give a folder away";
    }
    EXPECT_TRUE(IsReplaceableByOthers(inner));
}

} // namespace
