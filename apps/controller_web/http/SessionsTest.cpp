#include "controller_web/http/Sessions.h"

#include "controller_web/http/Secrets.h"

#include <cstdint>
#include <set>
#include <string>

#include <gtest/gtest.h>

namespace {

class SessionsTest : public testing::Test {
protected:
    std::int64_t now = 1'000'000;
    web::Sessions sessions{[this] { return now; }};
};

TEST_F(SessionsTest, ASessionIsKnownByItsSecretOnly) {
    const std::string secret = sessions.Open();
    EXPECT_TRUE(sessions.Use(secret));
    EXPECT_FALSE(sessions.Use(""));
    EXPECT_FALSE(sessions.Use(secret.substr(1)));
    EXPECT_FALSE(sessions.Use(web::NewSecret()));
}

TEST_F(SessionsTest, ASessionEndsWhenItWasNotUsedForTwelveHours) {
    const std::string secret = sessions.Open();
    now += 12 * 3600;
    EXPECT_TRUE(sessions.Use(secret));
    now += 12 * 3600;
    EXPECT_TRUE(sessions.Use(secret));
    now += 12 * 3600 + 1;
    EXPECT_FALSE(sessions.Use(secret));
}

TEST_F(SessionsTest, OneTooManyEndsTheOneThatWasUnusedForTheLongestTime) {
    const std::string first = sessions.Open();
    now += 1;
    const std::string second = sessions.Open();
    now += 1;
    ASSERT_TRUE(sessions.Use(first));
    for (std::size_t count = 1; count < web::Sessions::most; ++count) {
        now += 1;
        (void)sessions.Open();
    }
    EXPECT_TRUE(sessions.Use(first));
    EXPECT_FALSE(sessions.Use(second));
}

TEST(SessionsTest_Secrets, NoSecretComesTwiceAndEachHas256Bits) {
    std::set<std::string> secrets;
    for (int count = 0; count < 1000; ++count) {
        secrets.insert(web::NewSecret());
    }
    EXPECT_EQ(secrets.size(), 1000U);
    EXPECT_EQ(secrets.begin()->size(), 64U);
    EXPECT_TRUE(web::IsSecret(*secrets.begin()));
}

TEST(SessionsTest_Secrets, OtherTextsAreNoSecrets) {
    EXPECT_FALSE(web::IsSecret(""));
    EXPECT_FALSE(web::IsSecret(std::string(63, 'a')));
    EXPECT_FALSE(web::IsSecret(std::string(64, 'A')));
    EXPECT_FALSE(web::IsSecret("../" + std::string(61, 'a')));
}

} // namespace
