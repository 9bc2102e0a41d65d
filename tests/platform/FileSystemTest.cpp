#include "platform/files/FileSystem.h"
#include "platform/files/FileSystemCalls.h"

#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "platform/SystemHelpers.h"
#include "platform/files/NativePath.h"
#include "support/TemporaryFolder.h"
#include "text/Text.h"

namespace {

using platform::CreateFolder;
using platform::EnsureFolder;
using platform::ErrorKind;
using platform::Exists;
using platform::IdentityOf;
using platform::IsFolder;
using platform::ReadFile;
using platform::StampOf;

class FileSystemTest : public testing::Test {
protected:
    TemporaryFolder folder;
};

std::wstring CutByNull(const std::wstring& path) {
    return path + std::wstring(1, L'\0') + L"rest";
}

std::wstring RootOf(std::wstring path) {
    for (std::wstring above = platform::ParentFolder(path); !above.empty(); above = platform::ParentFolder(path)) {
        path = above;
    }
    return path;
}

TEST_F(FileSystemTest, FilesAndFoldersExist) {
    WriteTextFile(folder / L"a.txt", "");
    EXPECT_TRUE(Exists(folder.Path()));
    EXPECT_TRUE(Exists(folder.Path() + L"/a.txt"));
    EXPECT_FALSE(Exists(folder / L"b.txt"));
    EXPECT_FALSE(Exists(L""));
    EXPECT_TRUE(IsFolder(folder.Path()));
    EXPECT_FALSE(IsFolder(folder / L"a.txt"));
    EXPECT_FALSE(IsFolder(folder / L"b"));
}

TEST_F(FileSystemTest, ALinkIsWhatItLeadsTo) {
    ASSERT_FALSE(CreateFolder(folder / L"real"));
    if (!MakeLink(folder / L"real", folder / L"link")) {
        GTEST_SKIP() << "no symbolic links here";
    }
    ASSERT_TRUE(MakeLink(folder / L"nothing", folder / L"broken"));
    EXPECT_TRUE(IsFolder(folder / L"link"));
    EXPECT_EQ(IdentityOf(folder / L"link"), IdentityOf(folder / L"real"));
    EXPECT_FALSE(Exists(folder / L"broken"));
}

TEST_F(FileSystemTest, APathWithAnEmbeddedNullNamesNothing) {
    WriteTextFile(folder / L"a.txt", "old");
    const std::wstring cut = CutByNull(folder / L"a.txt");
    std::string bytes;
    EXPECT_FALSE(Exists(cut));
    EXPECT_FALSE(IsFolder(CutByNull(folder.Path())));
    EXPECT_FALSE(IdentityOf(cut).has_value());
    EXPECT_FALSE(StampOf(cut).has_value());
    EXPECT_EQ(ReadFile(cut, 100, bytes).kind, ErrorKind::NotFound);
    EXPECT_EQ(platform::ReplaceFile(cut, "new").kind, ErrorKind::NotFound);
    EXPECT_EQ(platform::CreateEmptyFile(cut).kind, ErrorKind::NotFound);
    EXPECT_EQ(platform::RenameFile(cut, folder / L"b").kind, ErrorKind::NotFound);
    EXPECT_EQ(platform::RenameFile(folder / L"a.txt", CutByNull(folder / L"b")).kind, ErrorKind::NotFound);
    EXPECT_EQ(platform::RemoveFile(cut).kind, ErrorKind::NotFound);
    EXPECT_EQ(platform::RemoveTree(CutByNull(folder.Path())).kind, ErrorKind::NotFound);
    EXPECT_EQ(CreateFolder(CutByNull(folder / L"new") + L"\\sub").kind, ErrorKind::NotFound);
    EXPECT_FALSE(Exists(folder / L"new"));
    EXPECT_EQ(ReadTextFile(folder / L"a.txt"), "old");
}

TEST_F(FileSystemTest, CreateFolderMakesMissingParents) {
    EXPECT_FALSE(CreateFolder(folder / L"a\\b/c\\\\d"));
    EXPECT_TRUE(IsFolder(folder / L"a\\b\\c\\d"));
    EXPECT_FALSE(CreateFolder(folder / L"with\\separator\\"));
    EXPECT_TRUE(IsFolder(folder / L"with\\separator"));
}

TEST_F(FileSystemTest, OfSeveralThatCreateOneFolderAtTheSameTimeOneSucceeds) {
    constexpr int rounds = 100;
    std::atomic<int> successes{0};
    const auto create = [&] {
        for (int round = 0; round < rounds; ++round) {
            const platform::Error error = CreateFolder(folder / (std::to_wstring(round) + L"\\folder"));
            EXPECT_TRUE(!error || error.kind == ErrorKind::AlreadyExists);
            successes += error ? 0 : 1;
        }
    };
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back(create);
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(successes, rounds);
}

TEST_F(FileSystemTest, CreateFolderRefusesWhatTheShellRefuses) {
    WriteTextFile(folder / L"file", "");
    EXPECT_EQ(CreateFolder(L"relative\\path").kind, ErrorKind::NotAbsolute);
    EXPECT_EQ(CreateFolder(folder.Path()).kind, ErrorKind::AlreadyExists);
    EXPECT_EQ(CreateFolder(folder / L"file").kind, ErrorKind::AlreadyExists);
    EXPECT_EQ(CreateFolder(folder / L"file\\below").kind, ErrorKind::NotFound);
    EXPECT_EQ(CreateFolder(folder / L"file\\far\\below").kind, ErrorKind::NotFound);
    EXPECT_EQ(CreateFolder(L"").kind, ErrorKind::NotFound);
}

TEST_F(FileSystemTest, EnsureFolderIsContentWithAnExistingFolder) {
    WriteTextFile(folder / L"file", "");
    EXPECT_FALSE(EnsureFolder(folder / L"a\\b"));
    EXPECT_FALSE(EnsureFolder(folder / L"a\\b"));
    EXPECT_FALSE(EnsureFolder(RootOf(folder.Path())));
    EXPECT_EQ(EnsureFolder(folder / L"file").kind, ErrorKind::AlreadyExists);
    EXPECT_EQ(EnsureFolder(L"relative").kind, ErrorKind::NotAbsolute);
}

TEST_F(FileSystemTest, APrivateFolderIsForItsOwnerAlone) {
    EXPECT_FALSE(platform::EnsurePrivateFolder(folder / L"private"));
    EXPECT_FALSE(platform::EnsurePrivateFolder(folder / L"private"));
    EXPECT_TRUE(IsFolder(folder / L"private"));
    EXPECT_EQ(PermissionsOf(folder / L"private").value_or(0700), 0700u);
    EXPECT_EQ(platform::EnsurePrivateFolder(folder / L"missing\\private").kind, ErrorKind::NotFound);
}

TEST_F(FileSystemTest, ALinkIsNoPrivateFolder) {
    ASSERT_FALSE(CreateFolder(folder / L"elsewhere"));
    if (!MakeLink(folder / L"elsewhere", folder / L"private")) {
        GTEST_SKIP() << "no symbolic links here";
    }
    EXPECT_EQ(platform::EnsurePrivateFolder(folder / L"private").kind, ErrorKind::AlreadyExists);
}

TEST_F(FileSystemTest, MissingParentsOfAPrivateFolderAreForTheirOwnerAloneToo) {
    EXPECT_FALSE(platform::EnsurePrivateFolders(folder / L"a\\b"));
    EXPECT_FALSE(platform::EnsurePrivateFolders(folder / L"a\\b"));
    EXPECT_FALSE(platform::ReplaceFile(folder / L"data\\job_list.json", "{}"));
    for (const wchar_t* const name : {L"a", L"a\\b", L"data"}) {
        EXPECT_EQ(PermissionsOf(folder / name).value_or(0700), 0700u) << text::ToUtf8(name);
    }
}

TEST_F(FileSystemTest, AnEmptyFileReplacesALinkAndLeavesAloneWhatItLeadsTo) {
    WriteTextFile(folder / L"precious", "content");
    if (!MakeLink(folder / L"precious", folder / L"link")) {
        GTEST_SKIP() << "no symbolic links here";
    }
    ASSERT_TRUE(MakeLink(folder / L"nothing", folder / L"broken"));
    for (const std::wstring& path : {folder / L"link", folder / L"broken"}) {
        EXPECT_FALSE(platform::CreateEmptyFile(path));
        EXPECT_FALSE(platform::IsLink(path));
        EXPECT_EQ(ReadTextFile(path), "");
    }
    EXPECT_EQ(ReadTextFile(folder / L"precious"), "content");
    EXPECT_FALSE(Exists(folder / L"nothing"));
}

TEST_F(FileSystemTest, AnEmptyFileReplacesAHardLinkAndLeavesTheFileAlone) {
    WriteTextFile(folder / L"precious", "content");
    ASSERT_FALSE(platform::LinkFile(folder / L"precious", folder / L"link"));
    EXPECT_FALSE(platform::CreateEmptyFile(folder / L"link"));
    EXPECT_EQ(ReadTextFile(folder / L"link"), "");
    EXPECT_EQ(ReadTextFile(folder / L"precious"), "content");
}

TEST_F(FileSystemTest, AnEmptyFileIsMadeInAFolderButNotThroughALinkToOne) {
    ASSERT_FALSE(platform::EnsureFolder(folder / L"real"));
    EXPECT_FALSE(platform::CreateEmptyFileIn(folder / L"real", L"file"));
    EXPECT_TRUE(platform::Exists(folder / L"real\\file"));
    EXPECT_EQ(platform::CreateEmptyFileIn(folder / L"missing", L"file").kind, ErrorKind::NotFound);
    if (MakeLink(folder / L"real", folder / L"link")) {
        EXPECT_EQ(platform::CreateEmptyFileIn(folder / L"link", L"other").kind, ErrorKind::NotSupported);
        EXPECT_FALSE(platform::Exists(folder / L"real\\other"));
    }
}

TEST_F(FileSystemTest, AnEmptyFileReplacesANamedPipeWithoutWaitingForItsReader) {
    if (!MakeNamedPipe(folder / L"pipe")) {
        GTEST_SKIP() << "no named pipes among the files here";
    }
    EXPECT_FALSE(platform::CreateEmptyFile(folder / L"pipe"));
    EXPECT_EQ(ReadTextFile(folder / L"pipe"), "");
}

TEST_F(FileSystemTest, PathsLongerThanTheOldLimitOfWindowsWork) {
    std::wstring deep = folder.Path();
    for (int level = 0; level < 20; ++level) {
        deep += L"\\a folder of thirty characters";
    }
    ASSERT_FALSE(CreateFolder(deep));
    ASSERT_FALSE(platform::ReplaceFile(deep + L"\\.\\file.txt", "content"));
    EXPECT_EQ(ReadTextFile(deep + L"/file.txt"), "content");
    std::vector<platform::FolderEntry> entries;
    EXPECT_FALSE(platform::ListFolder(deep, entries));
    ASSERT_EQ(entries.size(), 1u);
    EXPECT_EQ(entries[0].name, L"file.txt");
    EXPECT_FALSE(platform::RenameFile(deep + L"\\file.txt", deep + L"\\other.txt"));
    EXPECT_TRUE(Exists(deep + L"\\other.txt"));
    EXPECT_FALSE(platform::RemoveFile(deep + L"\\other.txt"));
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

TEST_F(FileSystemTest, EveryFileAndFolderHasAnIdentity) {
    ASSERT_FALSE(CreateFolder(folder / L"a\\b"));
    WriteTextFile(folder / L"x", "");
    WriteTextFile(folder / L"y", "");
    EXPECT_EQ(IdentityOf(folder / L"a"), IdentityOf(folder / L"a\\b\\.."));
    EXPECT_EQ(IdentityOf(folder / L"x"), IdentityOf(folder / L"x"));
    EXPECT_NE(IdentityOf(folder / L"x"), IdentityOf(folder / L"y"));
    EXPECT_TRUE(IdentityOf(folder / L"x").has_value());
    EXPECT_FALSE(IdentityOf(folder / L"z").has_value());
}

TEST_F(FileSystemTest, TheStampChangesWithTheFile) {
    WriteTextFile(folder / L"settings.json", "one");
    const auto first = StampOf(folder / L"settings.json");
    ASSERT_TRUE(first.has_value());
    EXPECT_EQ(first->size, 3u);
    EXPECT_GT(first->lastWrite, 0);
    EXPECT_EQ(StampOf(folder / L"settings.json"), first);
    WriteTextFile(folder / L"settings.json", "longer");
    EXPECT_NE(StampOf(folder / L"settings.json"), first);
    EXPECT_FALSE(StampOf(folder / L"missing").has_value());
}

TEST_F(FileSystemTest, ReadFileGivesTheWholeContent) {
    const std::string table[] = {"", "text", std::string("a\0b\r\n\x1A\xFF", 7), std::string(300'000, 'x')};
    for (const std::string& content : table) {
        WriteTextFile(folder / L"file", content);
        std::string bytes = "before";
        EXPECT_FALSE(ReadFile(folder / L"file", 1'000'000, bytes));
        EXPECT_EQ(bytes, content);
    }
}

TEST_F(FileSystemTest, ReadFileKeepsToTheLimit) {
    WriteTextFile(folder / L"file", "12345");
    std::string bytes = "before";
    EXPECT_EQ(ReadFile(folder / L"file", 4, bytes).kind, ErrorKind::TooLarge);
    EXPECT_EQ(bytes, "before");
    EXPECT_FALSE(ReadFile(folder / L"file", 5, bytes));
    EXPECT_EQ(bytes, "12345");
}

TEST_F(FileSystemTest, ReadFileReadsRegularFilesOnly) {
    std::string bytes = "before";
    EXPECT_EQ(ReadFile(folder / L"missing", 100, bytes).kind, ErrorKind::NotFound);
    EXPECT_EQ(ReadFile(folder.Path(), 100, bytes).kind, ErrorKind::NotSupported);
    if (MakeNamedPipe(folder / L"pipe")) {
        EXPECT_EQ(ReadFile(folder / L"pipe", 100, bytes).kind, ErrorKind::NotSupported);
    }
    EXPECT_EQ(bytes, "before");
}

TEST_F(FileSystemTest, ReadFileReadsFilesThatDoNotTellTheirSize) {
    if (OnWindows()) {
        GTEST_SKIP() << "every file tells its size here";
    }
    std::string bytes;
    EXPECT_FALSE(ReadFile(L"/proc/self/status", 100'000, bytes));
    EXPECT_NE(bytes.find("VmPeak"), std::string::npos);
    EXPECT_EQ(ReadFile(L"/proc/self/status", 10, bytes).kind, ErrorKind::TooLarge);
}

TEST_F(FileSystemTest, CreateEmptyFileCreatesOrTruncates) {
    WriteTextFile(folder / L"full", "content");
    EXPECT_FALSE(platform::CreateEmptyFile(folder / L"new"));
    EXPECT_FALSE(platform::CreateEmptyFile(folder / L"full"));
    EXPECT_EQ(ReadTextFile(folder / L"new"), "");
    EXPECT_EQ(ReadTextFile(folder / L"full"), "");
    EXPECT_EQ(platform::CreateEmptyFile(folder / L"missing\\file").kind, ErrorKind::NotFound);
}

TEST_F(FileSystemTest, RenameReplacesTheTarget) {
    WriteTextFile(folder / L"from", "new");
    WriteTextFile(folder / L"to", "old");
    EXPECT_FALSE(platform::RenameFile(folder / L"from", folder / L"to"));
    EXPECT_EQ(ReadTextFile(folder / L"to"), "new");
    EXPECT_FALSE(Exists(folder / L"from"));
    EXPECT_EQ(platform::RenameFile(folder / L"from", folder / L"to").kind, ErrorKind::NotFound);
}

TEST_F(FileSystemTest, RemoveFileRemovesALinkItself) {
    WriteTextFile(folder / L"target", "kept");
    EXPECT_EQ(platform::RemoveFile(folder / L"missing").kind, ErrorKind::NotFound);
    if (MakeLink(folder / L"target", folder / L"link")) {
        EXPECT_FALSE(platform::RemoveFile(folder / L"link"));
    }
    EXPECT_EQ(ReadTextFile(folder / L"target"), "kept");
    EXPECT_FALSE(platform::RemoveFile(folder / L"target"));
    EXPECT_FALSE(Exists(folder / L"target"));
}

TEST_F(FileSystemTest, NamesBeyondAsciiWork) {
    const std::wstring name = L"Gr\u00F6\u00DFe \u65E5\u672C";
    WriteTextFile(folder / name, "x");
    EXPECT_TRUE(Exists(folder / name));
    EXPECT_EQ(ReadTextFile(folder / name), "x");
}

} // namespace
