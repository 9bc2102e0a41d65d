#include "text/Numbers.h"

#include <gtest/gtest.h>

namespace {

using numbers::DecimalText;
using numbers::ReadInteger;

TEST(NumbersTest, ReadsTheNumberAtTheFront) {
    const std::pair<const wchar_t*, std::int32_t> table[] = {
        {L"0", 0},
        {L"5", 5},
        {L"0042", 42},
        {L"+7", 7},
        {L"-7", -7},
        {L" \t\n\v\f\r12", 12},
        {L"12abc", 12},
        {L"3.9", 3},
        {L"1,000", 1},
        {L"2147483647", 2147483647},
        {L"-2147483648", -2147483647 - 1},
        {L"2147483648", 2147483647},
        {L"-2147483649", -2147483647 - 1},
        {L"99999999999999999999999999", 2147483647},
        {L"-99999999999999999999999999", -2147483647 - 1},
    };
    for (const auto& [text, number] : table) {
        EXPECT_EQ(ReadInteger(text), number) << text;
    }
}

TEST(NumbersTest, TextThatBeginsWithNoNumberGivesZero) {
    for (const wchar_t* text : {L"", L" ", L"x", L"x5", L"+", L"-", L"--5", L"+-5", L"- 5", L".5", L"\u0663"}) {
        EXPECT_EQ(ReadInteger(text), 0) << text;
    }
}

TEST(NumbersTest, WritesDecimalDigits) {
    EXPECT_EQ(DecimalText(0), L"0");
    EXPECT_EQ(DecimalText(-1), L"-1");
    EXPECT_EQ(DecimalText(1234567), L"1234567");
    EXPECT_EQ(DecimalText(2147483647), L"2147483647");
    EXPECT_EQ(DecimalText(-2147483647 - 1), L"-2147483648");
}

} // namespace
