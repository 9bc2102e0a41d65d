#include "services/log/LogText.h"

#include <string>

#include <gtest/gtest.h>

using log_file::LogText;

TEST(LogTextTest, LeavesOrdinaryTextAlone) {
    EXPECT_EQ(LogText(L""), "");
    EXPECT_EQ(LogText(L"Job: 7 is started"), "Job: 7 is started");
    EXPECT_EQ(LogText(L"C:\\new\\table"), "C:\\new\\table");
    EXPECT_EQ(LogText(L"gr\u00fc\u00df \U0001F600"), "gr\xc3\xbc\xc3\x9f \xf0\x9f\x98\x80");
}

TEST(LogTextTest, EscapesWhateverEndsALine) {
    EXPECT_EQ(LogText(L"a\nb\r\nc"), "a\\nb\\r\\nc");
    EXPECT_EQ(LogText(L"a\x0b"
                      L"b\x0c"
                      L"c\u0085d\u2028e\u2029f"),
              "a\\u000bb\\u000cc\\u0085d\\u2028e\\u2029f");
}

TEST(LogTextTest, EscapesControlCharacters) {
    EXPECT_EQ(LogText(L"a\tb\x1b[31mc\x7f"), "a\\tb\\u001b[31mc\\u007f");
    EXPECT_EQ(LogText(std::wstring(L"a\0b", 3)), "a\\u0000b");
}

TEST(LogTextTest, EscapesWhatTurnsTheDirectionOfText) {
    EXPECT_EQ(LogText(L"a\u202eb\u202cc\u2066d\u2069e\u200ef\u200fg\u061ch"),
              "a\\u202eb\\u202cc\\u2066d\\u2069e\\u200ef\\u200fg\\u061ch");
    EXPECT_EQ(LogText(L"\u05d0\u0628"), "\xd7\x90\xd8\xa8");
}

TEST(LogTextTest, EscapesLoneSurrogates) {
    EXPECT_EQ(LogText(std::wstring(1, static_cast<wchar_t>(0xd800)) + L"x"), "\\ud800x");
    EXPECT_EQ(LogText(std::wstring(1, static_cast<wchar_t>(0xdc80))), "\\udc80");
}
