#include "controller_web/http/HeaderValues.h"

#include <gtest/gtest.h>

using namespace web;

namespace {

TEST(HeaderValuesTest, ACookieIsFoundByItsWholeName) {
    EXPECT_EQ(CookieValue("session_1=x; session=y;other=z", "session"), "y");
    EXPECT_EQ(CookieValue("a=b", "session"), std::nullopt);
    EXPECT_EQ(CookieValue("session", "session"), std::nullopt);
    EXPECT_EQ(CookieValue("", "session"), std::nullopt);
    EXPECT_EQ(CookieValue("session=", "session"), "");
}

TEST(HeaderValuesTest, OfSeveralCookiesOfOneNameTheFirstCounts) {
    EXPECT_EQ(CookieValue("session=first; session=second", "session"), "first");
}

TEST(HeaderValuesTest, AnEntityTagIsFoundInAListWeakOrNot) {
    EXPECT_TRUE(MatchesEntityTag("\"a\", W/\"b\"", "\"b\""));
    EXPECT_TRUE(MatchesEntityTag("*", "\"b\""));
    EXPECT_FALSE(MatchesEntityTag("\"bb\"", "\"b\""));
    EXPECT_FALSE(MatchesEntityTag("", "\"b\""));
}

TEST(HeaderValuesTest, GzipIsAcceptedUnlessItsQualityIsZero) {
    EXPECT_TRUE(AcceptsGzip("deflate, GZIP;q=0.5, br"));
    EXPECT_FALSE(AcceptsGzip("gzip;q=0"));
    EXPECT_FALSE(AcceptsGzip("gzip;q=0.000, br"));
    EXPECT_FALSE(AcceptsGzip("x-gzip, identity"));
    EXPECT_FALSE(AcceptsGzip(""));
}

TEST(HeaderValuesTest, AMediaTypeIsComparedWithoutParametersAndCase) {
    EXPECT_TRUE(IsMediaType("Application/JSON; charset=utf-8", "application/json"));
    EXPECT_FALSE(IsMediaType("application/json-patch", "application/json"));
    EXPECT_FALSE(IsMediaType("text/plain; application/json", "application/json"));
    EXPECT_FALSE(IsMediaType("", "application/json"));
}

TEST(HeaderValuesTest, SecretsAreEqualOnlyAsAWhole) {
    EXPECT_TRUE(AreEqualSecrets("secret", "secret"));
    EXPECT_FALSE(AreEqualSecrets("secret", "secreT"));
    EXPECT_FALSE(AreEqualSecrets("secret", "secre"));
    EXPECT_FALSE(AreEqualSecrets("", "s"));
}

} // namespace
