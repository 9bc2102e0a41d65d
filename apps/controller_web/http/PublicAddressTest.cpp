#include "controller_web/http/PublicAddress.h"

#include <gtest/gtest.h>

using web::ReadPublicAddress;

namespace {

TEST(PublicAddressTest, AnAddressHasOriginHostAndBasePath) {
    const auto address = ReadPublicAddress("https://jobs.example.org:8443/teams/alice");
    ASSERT_TRUE(address);
    EXPECT_EQ(address->origin, "https://jobs.example.org:8443");
    EXPECT_EQ(address->host, "jobs.example.org:8443");
    EXPECT_EQ(address->basePath, "/teams/alice/");
    EXPECT_TRUE(address->IsSecure());
}

TEST(PublicAddressTest, AnAddressWithoutPathIsTheRoot) {
    const auto address = ReadPublicAddress("http://localhost");
    ASSERT_TRUE(address);
    EXPECT_EQ(address->basePath, "/");
    EXPECT_FALSE(address->IsSecure());
}

TEST(PublicAddressTest, OtherTextsAreRefused) {
    for (const char* const text :
         {"", "jobs.example.org", "ftp://jobs.example.org/", "https://", "https:///a", "https://user@jobs.example.org/",
          "https://jobs.example.org/?a", "https://jobs.example.org/#a", "https://jobs.example.org//a",
          "https://jobs.example.org/a;b", "https://jobs.example.org/a b",
          "https://jobs.example.org/\r\nSet-Cookie: a"}) {
        EXPECT_FALSE(ReadPublicAddress(text)) << text;
    }
}

} // namespace
