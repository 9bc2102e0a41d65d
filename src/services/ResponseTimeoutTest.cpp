#include "services/ResponseTimeout.h"

#include <gtest/gtest.h>

namespace {

using namespace std::chrono_literals;
using response_timeout::From;

TEST(ResponseTimeoutTest, TheVariableSaysHowManySeconds) {
    EXPECT_EQ(From(std::nullopt), 20s);
    EXPECT_EQ(From(L"3"), 3s);
    EXPECT_EQ(From(L" +7 s"), 7s);
    EXPECT_EQ(From(L"0"), 0s);
    EXPECT_EQ(From(L"-5"), 0s);
    EXPECT_EQ(From(L"abc"), 0s);
    EXPECT_EQ(From(L""), 0s);
    EXPECT_EQ(From(L"99999999999999999999"), 24h);
}

} // namespace
