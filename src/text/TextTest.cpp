#include "text/Text.h"

#include <string>

#include <gtest/gtest.h>

namespace {

using text::FromStrictUtf8;
using text::FromUtf16;
using text::FromUtf8;
using text::ToUtf16;
using text::ToUtf8;

/// The wide text of one code point, in the units of this system.
std::wstring Wide(char32_t codePoint) {
    return codePoint < 0x10000 ? std::wstring(1, static_cast<wchar_t>(codePoint))
                               : FromUtf16(std::u16string{static_cast<char16_t>(0xD800 + ((codePoint - 0x10000) >> 10)),
                                                          static_cast<char16_t>(0xDC00 + (codePoint & 0x3FF))});
}

TEST(TextTest, ValidUtf8BecomesItsCodePointsAndBack) {
    const struct {
        std::string bytes;
        char32_t codePoint;
    } table[] = {
        {std::string(1, '\0'), 0x0},
        {"\x7F", 0x7F},
        {"\xC2\x80", 0x80},
        {"\xDF\xBF", 0x7FF},
        {"\xE0\xA0\x80", 0x800},
        {"\xED\x9F\xBF", 0xD7FF},
        {"\xEE\x80\x80", 0xE000},
        {"\xEF\xBF\xBF", 0xFFFF},
        {"\xF0\x90\x80\x80", 0x10000},
        {"\xF4\x8F\xBF\xBF", 0x10FFFF},
    };
    for (const auto& row : table) {
        EXPECT_EQ(FromUtf8(row.bytes), Wide(row.codePoint)) << testing::PrintToString(row.bytes);
        EXPECT_EQ(FromStrictUtf8(row.bytes), Wide(row.codePoint)) << testing::PrintToString(row.bytes);
        EXPECT_EQ(ToUtf8(Wide(row.codePoint)), row.bytes) << testing::PrintToString(row.bytes);
    }
}

TEST(TextTest, BytesThatAreNotUtf8AreCarriedAndComeBack) {
    const std::string table[] = {
        "\x80",             // continuation alone
        "\xC0\x80",         // overlong
        "\xC1\xBF",         // overlong
        "\xE0\x9F\xBF",     // overlong
        "\xF0\x8F\xBF\xBF", // overlong
        "\xED\xA0\x80",     // high surrogate
        "\xED\xB2\x80",     // the surrogate that encodes a byte
        "\xED\xA0\xBD\xED\xB2\x80",
        "\xF4\x90\x80\x80", // beyond U+10FFFF
        "\xF5\x80\x80\x80",
        "\xFF",
        "\xC3",
        "\xE2\x82",
        "\xF0\x9F\x98",
        "\xC3(",
        "a\xE2\x82z",
    };
    for (const std::string& bytes : table) {
        EXPECT_FALSE(FromStrictUtf8(bytes).has_value()) << testing::PrintToString(bytes);
        EXPECT_EQ(ToUtf8(FromUtf8(bytes)), bytes) << testing::PrintToString(bytes);
    }
    EXPECT_EQ(FromUtf8("a\xFF\x80"), (std::wstring{L'a', static_cast<wchar_t>(0xDCFF), static_cast<wchar_t>(0xDC80)}));
}

TEST(TextTest, UnpairedSurrogatesBecomeTheReplacementCharacterInUtf8) {
    EXPECT_EQ(ToUtf8(Wide(0xD800)), "\xEF\xBF\xBD");
    EXPECT_EQ(ToUtf8(Wide(0xD83D) + L"x"), "\xEF\xBF\xBDx");
    EXPECT_EQ(ToUtf8(Wide(0xDC00)), "\xEF\xBF\xBD");
    EXPECT_EQ(ToUtf8(Wide(0xDD00)), "\xEF\xBF\xBD");
}

TEST(TextTest, ASurrogatePairIsOneCharacterOnBothSystems) {
    const std::wstring pair{static_cast<wchar_t>(0xD83D), static_cast<wchar_t>(0xDE00)};
    EXPECT_EQ(ToUtf8(pair), "\xF0\x9F\x98\x80");
    EXPECT_EQ(ToUtf16(pair), u"\U0001F600");
}

TEST(TextTest, Utf16UnitsAreTheSameOnBothSystems) {
    EXPECT_EQ(ToUtf16(FromUtf8("a\xC3\xA9\xF0\x9F\x98\x80")), u"a\u00E9\U0001F600");
    EXPECT_EQ(ToUtf16(std::wstring(L"a\0b", 3)), std::u16string(u"a\0b", 3));
}

TEST(TextTest, UnpairedSurrogatesSurviveUtf16) {
    const std::u16string table[] = {
        {0xD800}, {0xDC00}, {0xDC00, 0xD800}, {0xD800, 0xD800, 0xDC00}, {u'a', 0xDBFF}, {0xDC80, 0xDCFF},
    };
    for (const std::u16string& units : table) {
        EXPECT_EQ(ToUtf16(FromUtf16(units)), units);
    }
}

TEST(TextTest, ValuesBeyondUnicodeBecomeTheReplacementCharacter) {
    if constexpr (sizeof(wchar_t) == 4) {
        const std::wstring beyond(1, static_cast<wchar_t>(0x110000));
        EXPECT_EQ(ToUtf8(beyond), "\xEF\xBF\xBD");
        EXPECT_EQ(ToUtf16(beyond), u"\uFFFD");
        EXPECT_EQ(ToUtf8(std::wstring(1, static_cast<wchar_t>(-1))), "\xEF\xBF\xBD");
    } else {
        EXPECT_EQ(sizeof(wchar_t), sizeof(char16_t)); // UTF-16 cannot represent such values
    }
}

TEST(TextTest, EmptyStaysEmpty) {
    EXPECT_EQ(FromUtf8(""), L"");
    EXPECT_EQ(ToUtf8(L""), "");
    EXPECT_EQ(FromStrictUtf8(""), L"");
    EXPECT_EQ(ToUtf16(L""), u"");
    EXPECT_EQ(FromUtf16(u""), L"");
}

} // namespace
