#include "controller_web/api/files/FilesBelow.h"
#include "controller_web/api/files/LogFeeds.h"
#include "controller_web/api/files/ZipStream.h"
#include "formats/RunFileNames.h"
#include "kit/TemporaryDirectory.h"
#include "platform/files/NativePath.h"
#include "text/Text.h"

#include <array>

#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

namespace {

class LinksBelowTest : public testing::Test {
protected:
    LinksBelowTest() {
        WriteTextFile(directory / L"secret\\key.txt", "secret");
        WriteTextFile(directory / L"out\\real.txt", "real");
    }

    std::string Native(const std::wstring& name) const {
        return text::ToUtf8(platform::ToNativeText(directory / name));
    }

    void Link(const std::wstring& target, const std::wstring& link) const {
        ASSERT_EQ(symlink(Native(target).c_str(), Native(link).c_str()), 0);
    }

    TemporaryDirectory directory;
};

TEST_F(LinksBelowTest, LinksAreNeitherListedNorFollowed) {
    Link(L"secret", L"out\\directory");
    Link(L"secret\\key.txt", L"out\\file.txt");
    Link(L"nowhere", L"out\\dangling");
    web::Listing listing;
    EXPECT_TRUE(web::ListFilesBelow(directory / L"out", listing));
    ASSERT_EQ(listing.entries.size(), 1U);
    EXPECT_EQ(listing.entries.front().path, L"real.txt");
    platform::File file;
    EXPECT_FALSE(web::OpenFileBelow(directory / L"out", {L"directory", L"key.txt"}, file));
    EXPECT_FALSE(web::OpenFileBelow(directory / L"out", {L"file.txt"}, file));
    EXPECT_FALSE(web::OpenFileBelow(directory / L"out", {L"dangling"}, file));
}

TEST_F(LinksBelowTest, AFollowedLogIsNoLink) {
    const std::wstring log = std::wstring(L"out\\") + run_protocol::logFileName;
    web::LogFeeds logs;
    const auto feed = logs.Open(directory / L"out", [] { return false; });
    Link(L"secret\\key.txt", log);
    EXPECT_EQ(feed->Next(), nullptr);
    ASSERT_EQ(unlink(Native(log).c_str()), 0);
    WriteTextFile(directory / log, "line");
    const auto text = feed->Next();
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(*text, "line");
}

TEST_F(LinksBelowTest, APipeIsNoFile) {
    ASSERT_EQ(mkfifo(Native(L"out\\pipe").c_str(), 0600), 0);
    platform::File file;
    EXPECT_FALSE(web::OpenFileBelow(directory / L"out", {L"pipe"}, file));
}

TEST_F(LinksBelowTest, AFileThatBecomesALinkEndsAnArchive) {
    web::Listing listing;
    EXPECT_TRUE(web::ListFilesBelow(directory / L"out", listing));
    ASSERT_EQ(unlink(Native(L"out\\real.txt").c_str()), 0);
    Link(L"secret\\key.txt", L"out\\real.txt");
    const auto archive = web::MakeZipStream(directory / L"out", listing.entries);
    std::array<char, 100> block{};
    EXPECT_EQ(archive->Read(block), std::nullopt);
}

} // namespace
