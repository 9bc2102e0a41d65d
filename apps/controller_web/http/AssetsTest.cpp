#include "controller_web/http/Assets.h"

#include <array>
#include <string>

#include <gtest/gtest.h>

namespace {

constexpr std::array<web::Asset, 2> files = {
    {{"index.html", "<p>", "", "1a"}, {"assets/x-2b.js", "let x", "zipped", "2b"}}};

class AssetsTest : public testing::Test {
protected:
    static std::string Header(const web::Response& response, const std::string& name) {
        for (const auto& [known, value] : response.headers) {
            if (known == name) {
                return value;
            }
        }
        return "";
    }
    static std::string Text(const web::Response& response) {
        const auto& text = std::get<web::Response::Text>(response.body);
        return text ? *text : "";
    }

    web::RequestHead head;
    const web::Assets assets{files};
};

TEST_F(AssetsTest, TheEmptyPathIsTheIndex) {
    const auto answer = assets.Answer("", head);
    ASSERT_TRUE(answer);
    EXPECT_EQ(Text(*answer), "<p>");
    EXPECT_EQ(Header(*answer, "Content-Type"), "text/html; charset=utf-8");
    EXPECT_EQ(Header(*answer, "Cache-Control"), "no-cache");
}

TEST_F(AssetsTest, FilesWithHashedNamesNeverChange) {
    const auto answer = assets.Answer("assets/x-2b.js", head);
    ASSERT_TRUE(answer);
    EXPECT_EQ(Header(*answer, "Cache-Control"), "private, max-age=31536000, immutable");
}

TEST_F(AssetsTest, TheCompressedFormHasItsOwnTag) {
    const auto plain = assets.Answer("assets/x-2b.js", head);
    head.acceptEncoding = "gzip, br";
    const auto compressed = assets.Answer("assets/x-2b.js", head);
    EXPECT_EQ(Text(*compressed), "zipped");
    EXPECT_EQ(Header(*compressed, "Content-Encoding"), "gzip");
    EXPECT_EQ(Header(*compressed, "Vary"), "Accept-Encoding");
    EXPECT_NE(Header(*compressed, "ETag"), Header(*plain, "ETag"));
}

TEST_F(AssetsTest, WithoutACompressedFormThePlainOneIsSent) {
    head.acceptEncoding = "gzip";
    EXPECT_EQ(Text(*assets.Answer("index.html", head)), "<p>");
}

TEST_F(AssetsTest, AKnownVersionIsNotSentAgain) {
    head.ifNoneMatch = "\"1a\"";
    const auto answer = assets.Answer("", head);
    EXPECT_EQ(answer->status, 304U);
    EXPECT_EQ(Text(*answer), "");
    EXPECT_EQ(Header(*answer, "ETag"), "\"1a\"");
}

TEST_F(AssetsTest, WhatIsNotAmongTheFilesIsNotThere) {
    for (const char* const path : {"assets", "assets/", "../index.html", "INDEX.HTML", "etc/passwd"}) {
        EXPECT_FALSE(assets.Answer(path, head)) << path;
    }
}

} // namespace
