#include "controller_cli/Patience.h"

#include <gtest/gtest.h>

namespace {

using namespace std::chrono_literals;
using controller_cli::PatienceFrom;

TEST(PatienceTest, TheVariableSaysHowManySeconds) {
    EXPECT_EQ(PatienceFrom(std::nullopt), 20s);
    EXPECT_EQ(PatienceFrom(L"3"), 3s);
    EXPECT_EQ(PatienceFrom(L" +7 s"), 7s);
    EXPECT_EQ(PatienceFrom(L"0"), 0s);
    EXPECT_EQ(PatienceFrom(L"-5"), 0s);
    EXPECT_EQ(PatienceFrom(L"abc"), 0s);
    EXPECT_EQ(PatienceFrom(L""), 0s);
    EXPECT_EQ(PatienceFrom(L"99999999999999999999"), 24h);
}

} // namespace
