#include "text/Hexadecimal.h"

#include <cstdint>
#include <optional>
#include <vector>

#include <gtest/gtest.h>

namespace {

using text::AppendUnicodeEscape;
using text::HandleText;
using text::HexadecimalText;
using text::ReadHandle;
using text::ReadHexadecimal;

TEST(HexadecimalTest, NumbersAreLowerCaseWithoutLeadingZeros) {
    EXPECT_EQ(HexadecimalText(0), L"0");
    EXPECT_EQ(HexadecimalText(0x03F9A0C1), L"3f9a0c1");
    EXPECT_EQ(HexadecimalText(UINT64_MAX), L"ffffffffffffffff");
}

TEST(HexadecimalTest, BytesAreTwoDigitsEach) {
    EXPECT_EQ(HexadecimalText(std::vector<std::uint8_t>{0x00, 0x0A, 0xFF}), L"000aff");
    EXPECT_EQ(HexadecimalText(std::vector<std::uint8_t>{}), L"");
}

TEST(HexadecimalTest, DigitsOfEitherCaseAreRead) {
    EXPECT_EQ(ReadHexadecimal(L"0"), 0U);
    EXPECT_EQ(ReadHexadecimal(L"aBcDeF09"), 0xABCDEF09U);
    EXPECT_EQ(ReadHexadecimal(L"ffffffffffffffff"), UINT64_MAX);
    EXPECT_EQ(ReadHexadecimal(L"00000000000000000001"), 1U);
}

TEST(HexadecimalTest, AnythingElseIsNoNumber) {
    for (const wchar_t* const text : {L"", L"g", L"-1", L"+1", L" 1", L"1 ", L"0x1", L"10000000000000000", L"\uff11",
                                      L"\u0131", L"@", L"`", L"G", L"/", L":", L"\x10"}) {
        EXPECT_EQ(ReadHexadecimal(text), std::nullopt) << testing::PrintToString(std::wstring(text));
    }
}

TEST(HexadecimalTest, HandlesComeBackWithAndWithoutTheirPrefix) {
    EXPECT_EQ(HandleText(0x1F4), L"0x1f4");
    for (const std::uint64_t number : {std::uint64_t{1}, std::uint64_t{0x1f4}, UINT64_MAX}) {
        EXPECT_EQ(ReadHandle(HandleText(number)), number);
        EXPECT_EQ(ReadHandle(HexadecimalText(number)), number);
    }
    EXPECT_EQ(ReadHandle(L"0X1F4"), 0x1F4U);
}

TEST(HexadecimalTest, NothingIsTheHandleZero) {
    for (const wchar_t* const text : {L"", L"0", L"0x", L"0x0", L"0x0x1", L"zz"}) {
        EXPECT_EQ(ReadHandle(text), std::nullopt) << testing::PrintToString(std::wstring(text));
    }
}

TEST(HexadecimalTest, EscapesHaveFourDigits) {
    std::wstring text = L"x";
    AppendUnicodeEscape(0x1B, text);
    AppendUnicodeEscape(0xDC80, text);
    EXPECT_EQ(text, L"x\\u001b\\udc80");
}

} // namespace
