#include "controller_web/api/files/FilesBelow.h"
#include "kit/TemporaryDirectory.h"

#include <gtest/gtest.h>

namespace {

class FilesBelowTest : public testing::Test {
protected:
    TemporaryDirectory directory;
};

TEST_F(FilesBelowTest, FilesAreListedWithTheirPaths) {
    WriteTextFile(directory / L"b.txt", "12");
    WriteTextFile(directory / L"a\\x\\y.txt", "123");
    web::Listing listing;
    ASSERT_TRUE(web::ListFilesBelow(directory.Path(), listing));
    ASSERT_EQ(listing.entries.size(), 2U);
    EXPECT_EQ(listing.entries[0].path, L"a/x/y.txt");
    EXPECT_EQ(listing.entries[0].size, 3U);
    EXPECT_EQ(listing.entries[1].path, L"b.txt");
    EXPECT_TRUE(listing.isComplete);
}

TEST_F(FilesBelowTest, AnEmptyOrMissingDirectoryHasNoFiles) {
    web::Listing listing;
    EXPECT_TRUE(web::ListFilesBelow(directory.Path(), listing));
    EXPECT_TRUE(listing.entries.empty());
    EXPECT_FALSE(web::ListFilesBelow(directory / L"missing", listing));
}

TEST_F(FilesBelowTest, TooDeepDirectoriesAreLeftOut) {
    std::wstring path = directory.Path();
    for (std::size_t depth = 0; depth <= web::deepestListed; ++depth) {
        path += L"\\d";
    }
    WriteTextFile(path + L"\\x.txt", "");
    WriteTextFile(directory / L"here.txt", "");
    web::Listing listing;
    EXPECT_TRUE(web::ListFilesBelow(directory.Path(), listing));
    EXPECT_EQ(listing.entries.size(), 1U);
    EXPECT_FALSE(listing.isComplete);
}

TEST_F(FilesBelowTest, AFileIsOpenedByItsNames) {
    WriteTextFile(directory / L"a\\b.txt", "content");
    platform::File file;
    EXPECT_TRUE(web::OpenFileBelow(directory.Path(), {L"a", L"b.txt"}, file));
    EXPECT_EQ(file.Size(), 7U);
    EXPECT_FALSE(web::OpenFileBelow(directory.Path(), {L"a"}, file));
    EXPECT_FALSE(web::OpenFileBelow(directory.Path(), {}, file));
}

TEST_F(FilesBelowTest, NamesThatLeadElsewhereAreNotFound) {
    WriteTextFile(directory / L"a\\b.txt", "content");
    WriteTextFile(directory / L"c.txt", "content");
    platform::File file;
    for (const std::wstring& name :
         {std::wstring(L".."), std::wstring(L"."), std::wstring(), std::wstring(L"..\\c.txt"),
          std::wstring(L"../c.txt"), std::wstring(L"b.txt:stream"), std::wstring(L"b.txt\0x", 7)}) {
        EXPECT_EQ(web::OpenFileBelow(directory / L"a", {name}, file).kind, platform::ErrorKind::NotFound);
        EXPECT_EQ(web::OpenFileBelow(directory / L"a", {name, L"b.txt"}, file).kind, platform::ErrorKind::NotFound);
    }
}

} // namespace
