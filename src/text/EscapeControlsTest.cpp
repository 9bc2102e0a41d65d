#include "text/EscapeControls.h"

#include <string>

#include <gtest/gtest.h>

using text::EscapedUtf8;

TEST(EscapeControlsTest, LeavesOrdinaryTextAlone) {
    EXPECT_EQ(EscapedUtf8(L""), "");
    EXPECT_EQ(EscapedUtf8(L"Job: 7 is started"), "Job: 7 is started");
    EXPECT_EQ(EscapedUtf8(L"C:\\new\\table"), "C:\\new\\table");
    EXPECT_EQ(EscapedUtf8(L"gr\u00fc\u00df \U0001F600"), "gr\xc3\xbc\xc3\x9f \xf0\x9f\x98\x80");
}

TEST(EscapeControlsTest, EscapesWhateverEndsALine) {
    EXPECT_EQ(EscapedUtf8(L"a\nb\r\nc"), "a\\nb\\r\\nc");
    EXPECT_EQ(EscapedUtf8(L"a\x0b"
                          L"b\x0c"
                          L"c\u0085d\u2028e\u2029f"),
              "a\\u000bb\\u000cc\\u0085d\\u2028e\\u2029f");
}

TEST(EscapeControlsTest, EscapesControlCharacters) {
    EXPECT_EQ(EscapedUtf8(L"a\tb\x1b[31mc\x7f"), "a\\tb\\u001b[31mc\\u007f");
    EXPECT_EQ(EscapedUtf8(std::wstring(L"a\0b", 3)), "a\\u0000b");
}

TEST(EscapeControlsTest, EscapesWhatTurnsTheDirectionOfText) {
    EXPECT_EQ(EscapedUtf8(L"a\u202eb\u202cc\u2066d\u2069e\u200ef\u200fg\u061ch"),
              "a\\u202eb\\u202cc\\u2066d\\u2069e\\u200ef\\u200fg\\u061ch");
    EXPECT_EQ(EscapedUtf8(L"\u05d0\u0628"), "\xd7\x90\xd8\xa8");
}

TEST(EscapeControlsTest, EscapesLoneSurrogates) {
    EXPECT_EQ(EscapedUtf8(std::wstring(1, static_cast<wchar_t>(0xd800)) + L"x"), "\\ud800x");
    EXPECT_EQ(EscapedUtf8(std::wstring(1, static_cast<wchar_t>(0xdc80))), "\\udc80");
}

TEST(EscapeControlsTest, ALineIsOfLimitedLengthAndWithoutControlCharacters) {
    EXPECT_TRUE(text::IsOneLine(L"", 0));
    EXPECT_TRUE(text::IsOneLine(L"gr\u00fc\u00df", 4));
    EXPECT_FALSE(text::IsOneLine(L"gr\u00fc\u00df", 3));
    EXPECT_FALSE(text::IsOneLine(L"a\nb", 10));
    EXPECT_FALSE(text::IsOneLine(std::wstring(L"a\0b", 3), 10));
}
