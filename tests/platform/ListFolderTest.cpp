#include <algorithm>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/SystemHelpers.h"
#include "platform/files/FileSystem.h"
#include "support/TemporaryFolder.h"
#include "text/Text.h"

namespace {

using platform::ErrorKind;
using platform::FolderEntry;
using platform::ListFolder;
using testing::ElementsAre;
using testing::UnorderedElementsAre;

class ListFolderTest : public testing::Test {
protected:
    void Touch(const std::wstring& name) { ASSERT_FALSE(platform::CreateEmptyFile(folder / name)); }

    std::vector<std::wstring> Names() const {
        std::vector<std::wstring> names;
        for (const FolderEntry& entry : Entries()) {
            names.push_back(entry.name);
        }
        return names;
    }

    std::vector<FolderEntry> Entries() const {
        std::vector<FolderEntry> entries;
        EXPECT_FALSE(ListFolder(folder.Path(), entries));
        return entries;
    }

    FolderEntry Entry(const std::wstring& name) const {
        const auto entries = Entries();
        const auto found =
            std::find_if(entries.begin(), entries.end(), [&](const auto& entry) { return entry.name == name; });
        return found == entries.end() ? FolderEntry{} : *found;
    }

    TemporaryFolder folder;
};

TEST_F(ListFolderTest, AnEmptyFolderHasNoEntries) {
    EXPECT_THAT(Names(), ElementsAre());
}

TEST_F(ListFolderTest, FilesAreToldFromFolders) {
    Touch(L"file");
    Touch(L".hidden");
    ASSERT_FALSE(platform::CreateFolder(folder / L"folder"));
    EXPECT_THAT(Names(), UnorderedElementsAre(L".hidden", L"file", L"folder"));
    EXPECT_TRUE(Entry(L"folder").isFolder);
    EXPECT_FALSE(Entry(L"file").isFolder);
    EXPECT_FALSE(Entry(L"folder").isLink);
}

TEST_F(ListFolderTest, EntriesAreSortedWithoutRegardToCase) {
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

TEST_F(ListFolderTest, LettersOfOtherAlphabetsAreFoldedToo) {
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

TEST_F(ListFolderTest, LinksAreMarkedAndShownAsWhatTheyLeadTo) {
    ASSERT_FALSE(platform::CreateFolder(folder / L"folder"));
    Touch(L"file");
    if (!MakeLink(folder / L"folder", folder / L"to-folder")) {
        GTEST_SKIP() << "no symbolic links here";
    }
    ASSERT_TRUE(MakeLink(folder / L"file", folder / L"to-file"));
    ASSERT_TRUE(MakeLink(folder / L"missing", folder / L"to-nothing"));
    EXPECT_THAT(Names(), UnorderedElementsAre(L"file", L"folder", L"to-file", L"to-folder", L"to-nothing"));
    EXPECT_FALSE(Entry(L"to-nothing").isFolder);
    EXPECT_TRUE(Entry(L"to-nothing").isLink);
    EXPECT_TRUE(Entry(L"to-folder").isFolder);
    EXPECT_TRUE(Entry(L"to-folder").isLink);
    EXPECT_FALSE(Entry(L"to-file").isFolder);
    EXPECT_TRUE(Entry(L"to-file").isLink);
}

TEST_F(ListFolderTest, NamesThatAreNotUtf8CanBeOpenedByWhatIsListed) {
    if (!MakeFileOfBytes(folder.Path(), "\xFFmesh\xC3.rb")) {
        GTEST_SKIP() << "names are wide here";
    }
    ASSERT_EQ(Names().size(), 1u);
    EXPECT_TRUE(platform::Exists(folder / Names()[0]));
    EXPECT_EQ(text::ToUtf8(Names()[0]), "\xFFmesh\xC3.rb");
}

TEST_F(ListFolderTest, NamesWithABackslashAreLeftOut) {
    if (!MakeFileOfBytes(folder.Path(), "..\\outside.rb")) {
        GTEST_SKIP() << "no such names here";
    }
    EXPECT_THAT(Names(), ElementsAre());
}

TEST_F(ListFolderTest, EntriesAreAppended) {
    Touch(L"b");
    std::vector<FolderEntry> entries = {{L"z", false, false}};
    EXPECT_FALSE(ListFolder(folder.Path() + L"\\", entries));
    ASSERT_EQ(entries.size(), 2u);
    EXPECT_EQ(entries[0].name, L"z");
    EXPECT_EQ(entries[1].name, L"b");
}

TEST_F(ListFolderTest, WhatIsNoFolderCannotBeListed) {
    Touch(L"file");
    std::vector<FolderEntry> entries;
    EXPECT_EQ(ListFolder(folder / L"missing", entries).kind, ErrorKind::NotFound);
    EXPECT_EQ(ListFolder(folder / L"file", entries).kind, ErrorKind::NotFound);
    EXPECT_EQ(ListFolder(L"", entries).kind, ErrorKind::NotFound);
    EXPECT_EQ(ListFolder(folder.Path() + std::wstring(1, L'\0'), entries).kind, ErrorKind::NotFound);
    EXPECT_TRUE(entries.empty());
}

} // namespace
