#include <algorithm>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "kit/SystemHelpers.h"
#include "kit/TemporaryDirectory.h"
#include "platform/files/FileSystem.h"
#include "text/Text.h"

namespace {

using platform::DirectoryEntry;
using platform::ErrorKind;
using platform::ListDirectory;
using testing::ElementsAre;
using testing::UnorderedElementsAre;

class ListDirectoryTest : public testing::Test {
protected:
    void Touch(const std::wstring& name) { ASSERT_FALSE(platform::CreateEmptyFile(directory / name)); }

    std::vector<std::wstring> Names() const {
        std::vector<std::wstring> names;
        for (const DirectoryEntry& entry : Entries()) {
            names.push_back(entry.name);
        }
        return names;
    }

    std::vector<DirectoryEntry> Entries() const {
        std::vector<DirectoryEntry> entries;
        EXPECT_FALSE(ListDirectory(directory.Path(), entries));
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

TEST_F(ListDirectoryTest, AnEmptyDirectoryHasNoEntries) {
    EXPECT_THAT(Names(), ElementsAre());
}

TEST_F(ListDirectoryTest, FilesAreToldFromDirectories) {
    Touch(L"file");
    Touch(L".hidden");
    ASSERT_FALSE(platform::CreateNewDirectory(directory / L"folder"));
    EXPECT_THAT(Names(), UnorderedElementsAre(L".hidden", L"file", L"folder"));
    EXPECT_TRUE(Entry(L"folder").isDirectory);
    EXPECT_FALSE(Entry(L"file").isDirectory);
    EXPECT_FALSE(Entry(L"folder").isLink);
}

TEST_F(ListDirectoryTest, EntriesAreSortedWithoutRegardToCase) {
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

TEST_F(ListDirectoryTest, LettersOfOtherAlphabetsAreFoldedToo) {
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

TEST_F(ListDirectoryTest, LinksAreMarkedAndShownAsWhatTheyLeadTo) {
    ASSERT_FALSE(platform::CreateNewDirectory(directory / L"folder"));
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

TEST_F(ListDirectoryTest, NamesThatAreNotUtf8CanBeOpenedByWhatIsListed) {
    if (!MakeFileOfBytes(directory.Path(), "\xFFmesh\xC3.rb")) {
        GTEST_SKIP() << "names are wide here";
    }
    ASSERT_EQ(Names().size(), 1u);
    EXPECT_TRUE(platform::Exists(directory / Names()[0]));
    EXPECT_EQ(text::ToUtf8(Names()[0]), "\xFFmesh\xC3.rb");
}

TEST_F(ListDirectoryTest, NamesWithABackslashAreLeftOut) {
    if (!MakeFileOfBytes(directory.Path(), "..\\outside.rb")) {
        GTEST_SKIP() << "no such names here";
    }
    EXPECT_THAT(Names(), ElementsAre());
}

TEST_F(ListDirectoryTest, EntriesAreAppended) {
    Touch(L"b");
    std::vector<DirectoryEntry> entries = {{L"z", false, false}};
    EXPECT_FALSE(ListDirectory(directory.Path() + L"\\", entries));
    ASSERT_EQ(entries.size(), 2u);
    EXPECT_EQ(entries[0].name, L"z");
    EXPECT_EQ(entries[1].name, L"b");
}

TEST_F(ListDirectoryTest, WhatIsNoDirectoryCannotBeListed) {
    Touch(L"file");
    std::vector<DirectoryEntry> entries;
    EXPECT_EQ(ListDirectory(directory / L"missing", entries).kind, ErrorKind::NotFound);
    EXPECT_EQ(ListDirectory(directory / L"file", entries).kind, ErrorKind::NotFound);
    EXPECT_EQ(ListDirectory(L"", entries).kind, ErrorKind::NotFound);
    EXPECT_EQ(ListDirectory(directory.Path() + std::wstring(1, L'\0'), entries).kind, ErrorKind::NotFound);
    EXPECT_TRUE(entries.empty());
}

} // namespace
