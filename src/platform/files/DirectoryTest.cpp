#include "platform/files/Directory.h"

#include <algorithm>
#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "kit/SystemHelpers.h"
#include "kit/TemporaryDirectory.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "platform/files/ReplaceFile.h"
#include "text/Text.h"

namespace {

using platform::CreateNewDirectory;
using platform::DirectoryEntry;
using platform::EnsureDirectory;
using platform::ErrorKind;
using platform::IsDirectory;
using platform::ListDirectory;
using testing::ElementsAre;
using testing::UnorderedElementsAre;

class DirectoryTest_List : public testing::Test {
protected:
    void Touch(const std::wstring& name) { ASSERT_TRUE(platform::CreateEmptyFile(directory / name)); }

    std::vector<std::wstring> Names() const {
        std::vector<std::wstring> names;
        for (const DirectoryEntry& entry : Entries()) {
            names.push_back(entry.name);
        }
        return names;
    }

    std::vector<DirectoryEntry> Entries() const {
        std::vector<DirectoryEntry> entries;
        EXPECT_TRUE(ListDirectory(directory.Path(), entries));
        return entries;
    }

    DirectoryEntry Entry(const std::wstring& name) const {
        const auto entries = Entries();
        const auto found =
            std::find_if(entries.begin(), entries.end(), [&](const auto& entry) { return entry.name == name; });
        return found == entries.end() ? DirectoryEntry{} : *found;
    }

    TemporaryDirectory directory;
};

TEST_F(DirectoryTest_List, AnEmptyDirectoryHasNoEntries) {
    EXPECT_THAT(Names(), ElementsAre());
}

TEST_F(DirectoryTest_List, FilesAreToldFromDirectories) {
    Touch(L"file");
    Touch(L".hidden");
    ASSERT_TRUE(platform::CreateNewDirectory(directory / L"folder"));
    EXPECT_THAT(Names(), UnorderedElementsAre(L".hidden", L"file", L"folder"));
    EXPECT_TRUE(Entry(L"folder").isDirectory);
    EXPECT_FALSE(Entry(L"file").isDirectory);
    EXPECT_FALSE(Entry(L"folder").isLink);
}

TEST_F(DirectoryTest_List, EntriesAreSortedWithoutRegardToCase) {
    for (const wchar_t* name : {L"b.rb", L"A.rb", L"_.rb", L"C.rb", L"a2.rb", L"\u00E9.rb", L"\u00C8.rb", L"z.rb"}) {
        Touch(name);
    }
    if (OnWindows()) {
        EXPECT_THAT(Names(), UnorderedElementsAre(L"A.rb", L"a2.rb", L"b.rb", L"C.rb", L"z.rb", L"_.rb", L"\u00C8.rb",
                                                  L"\u00E9.rb"));
        return;
    }
    Touch(L"a.rb");
    EXPECT_THAT(Names(), ElementsAre(L"A.rb", L"a.rb", L"a2.rb", L"b.rb", L"C.rb", L"z.rb", L"_.rb", L"\u00C8.rb",
                                     L"\u00E9.rb"));
}

TEST_F(DirectoryTest_List, LettersOfOtherAlphabetsAreFoldedToo) {
    if (OnWindows()) {
        GTEST_SKIP() << "the system sorts here";
    }
    // Latin: d with caron, l with caron, z with dot; Greek alpha, final sigma; Cyrillic a, io.
    for (const wchar_t* name : {L"\u010F2", L"\u010E1", L"\u013E2", L"\u013D1", L"\u017C2", L"\u017B1", L"\u03B12",
                                L"\u03911", L"\u04302", L"\u04101", L"\u04512", L"\u04011"}) {
        Touch(name);
    }
    EXPECT_THAT(Names(), ElementsAre(L"\u010E1", L"\u010F2", L"\u013D1", L"\u013E2", L"\u017B1", L"\u017C2", L"\u03911",
                                     L"\u03B12", L"\u04011", L"\u04512", L"\u04101", L"\u04302"));
}

TEST_F(DirectoryTest_List, LinksAreMarkedAndShownAsWhatTheyLeadTo) {
    ASSERT_TRUE(platform::CreateNewDirectory(directory / L"folder"));
    Touch(L"file");
    if (!MakeLink(directory / L"folder", directory / L"to-folder")) {
        GTEST_SKIP() << "no symbolic links here";
    }
    ASSERT_TRUE(MakeLink(directory / L"file", directory / L"to-file"));
    ASSERT_TRUE(MakeLink(directory / L"missing", directory / L"to-nothing"));
    EXPECT_THAT(Names(), UnorderedElementsAre(L"file", L"folder", L"to-file", L"to-folder", L"to-nothing"));
    EXPECT_FALSE(Entry(L"to-nothing").isDirectory);
    EXPECT_TRUE(Entry(L"to-nothing").isLink);
    EXPECT_TRUE(Entry(L"to-folder").isDirectory);
    EXPECT_TRUE(Entry(L"to-folder").isLink);
    EXPECT_FALSE(Entry(L"to-file").isDirectory);
    EXPECT_TRUE(Entry(L"to-file").isLink);
}

TEST_F(DirectoryTest_List, NamesThatAreNotUtf8CanBeOpenedByWhatIsListed) {
    if (!MakeFileOfBytes(directory.Path(), "\xFFmesh\xC3.rb")) {
        GTEST_SKIP() << "names are wide here";
    }
    ASSERT_EQ(Names().size(), 1u);
    EXPECT_TRUE(platform::Exists(directory / Names()[0]));
    EXPECT_EQ(text::ToUtf8(Names()[0]), "\xFFmesh\xC3.rb");
}

TEST_F(DirectoryTest_List, NamesWithABackslashAreLeftOut) {
    if (!MakeFileOfBytes(directory.Path(), "..\\outside.rb")) {
        GTEST_SKIP() << "no such names here";
    }
    EXPECT_THAT(Names(), ElementsAre());
    std::vector<DirectoryEntry> entries;
    bool isComplete = true;
    EXPECT_TRUE(ListDirectory(directory.Path(), entries, &isComplete));
    EXPECT_FALSE(isComplete);
}

TEST_F(DirectoryTest_List, EntriesAreAppended) {
    Touch(L"b");
    std::vector<DirectoryEntry> entries = {{L"z", false, false}};
    bool isComplete = true;
    EXPECT_TRUE(ListDirectory(directory.Path() + L"\\", entries, &isComplete));
    EXPECT_TRUE(isComplete);
    ASSERT_EQ(entries.size(), 2u);
    EXPECT_EQ(entries[0].name, L"z");
    EXPECT_EQ(entries[1].name, L"b");
}

TEST_F(DirectoryTest_List, WhatIsNoDirectoryCannotBeListed) {
    Touch(L"file");
    std::vector<DirectoryEntry> entries;
    EXPECT_EQ(ListDirectory(directory / L"missing", entries).kind, ErrorKind::NotFound);
    EXPECT_EQ(ListDirectory(directory / L"file", entries).kind, ErrorKind::NotFound);
    EXPECT_EQ(ListDirectory(L"", entries).kind, ErrorKind::NotFound);
    EXPECT_EQ(ListDirectory(directory.Path() + std::wstring(1, L'\0'), entries).kind, ErrorKind::NotFound);
    EXPECT_TRUE(entries.empty());
}

class DirectoryTest : public testing::Test {
protected:
    TemporaryDirectory directory;
};

std::wstring RootOf(std::wstring path) {
    for (std::wstring above = platform::ParentDirectory(path); !above.empty();
         above = platform::ParentDirectory(path)) {
        path = above;
    }
    return path;
}

TEST_F(DirectoryTest, CreateDirectoryMakesMissingParents) {
    EXPECT_TRUE(CreateNewDirectory(directory / L"a\\b/c\\\\d"));
    EXPECT_TRUE(IsDirectory(directory / L"a\\b\\c\\d"));
    EXPECT_TRUE(CreateNewDirectory(directory / L"with\\separator\\"));
    EXPECT_TRUE(IsDirectory(directory / L"with\\separator"));
}

TEST_F(DirectoryTest, OfSeveralThatCreateOneDirectoryAtTheSameTimeOneSucceeds) {
    constexpr int rounds = 100;
    std::atomic<int> successes{0};
    const auto create = [&] {
        for (int round = 0; round < rounds; ++round) {
            const platform::Error result = CreateNewDirectory(directory / (std::to_wstring(round) + L"\\folder"));
            EXPECT_TRUE(result || result.kind == ErrorKind::AlreadyExists);
            successes += result ? 1 : 0;
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

TEST_F(DirectoryTest, CreateDirectoryRefusesWhatTheShellRefuses) {
    WriteTextFile(directory / L"file", "");
    EXPECT_EQ(CreateNewDirectory(L"relative\\path").kind, ErrorKind::NotAbsolute);
    EXPECT_EQ(CreateNewDirectory(directory.Path()).kind, ErrorKind::AlreadyExists);
    EXPECT_EQ(CreateNewDirectory(directory / L"file").kind, ErrorKind::AlreadyExists);
    EXPECT_EQ(CreateNewDirectory(directory / L"file\\below").kind, ErrorKind::NotFound);
    EXPECT_EQ(CreateNewDirectory(directory / L"file\\far\\below").kind, ErrorKind::NotFound);
    EXPECT_EQ(CreateNewDirectory(L"").kind, ErrorKind::NotFound);
}

TEST_F(DirectoryTest, EnsureDirectoryIsContentWithAnExistingDirectory) {
    WriteTextFile(directory / L"file", "");
    EXPECT_TRUE(EnsureDirectory(directory / L"a\\b"));
    EXPECT_TRUE(EnsureDirectory(directory / L"a\\b"));
    EXPECT_TRUE(EnsureDirectory(RootOf(directory.Path())));
    EXPECT_EQ(EnsureDirectory(directory / L"file").kind, ErrorKind::AlreadyExists);
    EXPECT_EQ(EnsureDirectory(L"relative").kind, ErrorKind::NotAbsolute);
}

TEST_F(DirectoryTest, APrivateDirectoryIsForItsOwnerAlone) {
    EXPECT_TRUE(platform::EnsurePrivateDirectory(directory / L"private"));
    EXPECT_TRUE(platform::EnsurePrivateDirectory(directory / L"private"));
    EXPECT_TRUE(IsDirectory(directory / L"private"));
    EXPECT_EQ(PermissionsOf(directory / L"private").value_or(0700), 0700u);
    EXPECT_EQ(platform::EnsurePrivateDirectory(directory / L"missing\\private").kind, ErrorKind::NotFound);
}

TEST_F(DirectoryTest, ALinkIsNoPrivateDirectory) {
    ASSERT_TRUE(CreateNewDirectory(directory / L"elsewhere"));
    if (!MakeLink(directory / L"elsewhere", directory / L"private")) {
        GTEST_SKIP() << "no symbolic links here";
    }
    EXPECT_EQ(platform::EnsurePrivateDirectory(directory / L"private").kind, ErrorKind::AlreadyExists);
}

TEST_F(DirectoryTest, MissingParentsOfAPrivateDirectoryAreForTheirOwnerAloneToo) {
    EXPECT_TRUE(platform::EnsurePrivateDirectories(directory / L"a\\b"));
    EXPECT_TRUE(platform::EnsurePrivateDirectories(directory / L"a\\b"));
    EXPECT_TRUE(platform::ReplaceFile(directory / L"data\\job_list.json", "{}"));
    for (const wchar_t* const name : {L"a", L"a\\b", L"data"}) {
        EXPECT_EQ(PermissionsOf(directory / name).value_or(0700), 0700u) << text::ToUtf8(name);
    }
}

} // namespace
