#include "controller_web/api/files/Uploads.h"
#include "controller_web/api/Answers.h"
#include "kit/TemporaryDirectory.h"
#include "platform/files/Directory.h"
#include "platform/files/FileSystem.h"
#include "platform/system/Clock.h"

#include <gtest/gtest.h>

namespace {

class UploadsTest : public testing::Test {
protected:
    std::wstring Store(web::Uploads& uploads, const std::string& content) const {
        web::ReceivedFile file;
        EXPECT_TRUE(file.Create(arriving));
        EXPECT_TRUE(file.Append(content));
        return uploads.Store("part.stl", file);
    }

    unsigned StatusOf(web::Uploads& uploads, const std::string& content) const {
        try {
            Store(uploads, content);
            return 201;
        } catch (const web::ApiError& error) {
            return error.status;
        }
    }

    TemporaryDirectory directory;
    const std::wstring arriving = directory / L"arriving";
    std::int64_t now = platform::Now();
    std::function<std::int64_t()> clock = [this] { return now; };
};

TEST_F(UploadsTest, TheNumberOfFilesIsLimited) {
    web::Uploads uploads(directory / L"uploads", {2, 1000, 3600}, clock);
    EXPECT_EQ(StatusOf(uploads, "a"), 201U);
    EXPECT_EQ(StatusOf(uploads, "b"), 201U);
    EXPECT_EQ(StatusOf(uploads, "c"), 429U);
    std::vector<platform::DirectoryEntry> left;
    EXPECT_TRUE(platform::ListDirectory(arriving, left));
    EXPECT_TRUE(left.empty());
}

TEST_F(UploadsTest, TheirSizeIsLimited) {
    web::Uploads uploads(directory / L"uploads", {10, 10, 3600}, clock);
    EXPECT_EQ(StatusOf(uploads, "123456"), 201U);
    EXPECT_EQ(StatusOf(uploads, "12345"), 429U);
    EXPECT_EQ(StatusOf(uploads, "1234"), 201U);
}

TEST_F(UploadsTest, OldFilesMakeRoom) {
    web::Uploads uploads(directory / L"uploads", {1, 1000, 3600}, clock);
    const std::wstring first = Store(uploads, "a");
    EXPECT_EQ(ReadTextFile(first), "a");
    EXPECT_EQ(StatusOf(uploads, "b"), 429U);
    now += 3700;
    EXPECT_EQ(StatusOf(uploads, "b"), 201U);
    EXPECT_FALSE(platform::Exists(first));
}

} // namespace
