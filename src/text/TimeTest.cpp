#include "text/Time.h"

#include <gtest/gtest.h>

namespace {

TEST(TimeTest, AUtcTimeIsReadInItsOneForm) {
    EXPECT_EQ(text::ReadUtcTime(L"1970-01-01T00:00:00Z"), 0);
    EXPECT_EQ(text::ReadUtcTime(L"2024-02-29T23:59:59Z"), 1709251199);
    for (const wchar_t* const wrong :
         {L"", L"2024-02-30T00:00:00Z", L"2024-02-29T24:00:00Z", L"2024-02-29T00:60:00Z", L"2024-02-29 00:00:00Z",
          L"2024-02-29T00:00:00", L"2024-02-29T00:00:00ZZ", L"2o24-02-29T00:00:00Z", L"2024/02/29T00:00:00Z"}) {
        EXPECT_EQ(text::ReadUtcTime(wrong), std::nullopt) << wrong;
    }
}

TEST(TimeTest, ADurationIsAWholeNumberWithItsUnit) {
    EXPECT_EQ(text::ReadDuration(L"90s"), 90);
    EXPECT_EQ(text::ReadDuration(L"15m"), 900);
    EXPECT_EQ(text::ReadDuration(L"2h"), 7200);
    EXPECT_EQ(text::ReadDuration(L"999999d"), 86399913600);
    for (const wchar_t* const wrong : {L"", L"s", L"5", L"-5s", L"1.5h", L"5 m", L"1000000d", L"5w"}) {
        EXPECT_EQ(text::ReadDuration(wrong), std::nullopt) << wrong;
    }
}

} // namespace
