#include "front_end/output/DisplayText.h"

#include <gtest/gtest.h>

namespace {

using namespace front_end;

TEST(DisplayTextTest, WidthsOfCharacters) {
    EXPECT_EQ(DisplayWidth(L""), 0U);
    EXPECT_EQ(DisplayWidth(L"abc"), 3U);
    EXPECT_EQ(DisplayWidth(L"Gr\xf6\xdf"
                           L"e"),
              5U);
    EXPECT_EQ(DisplayWidth(L"\x4e16\x754c"), 4U);
    EXPECT_EQ(DisplayWidth(L"e\x0301"), 1U);
    EXPECT_EQ(DisplayWidth(L"\U0001F600"), 2U);
    EXPECT_EQ(DisplayWidth(L"\xff21"), 2U);
    EXPECT_EQ(DisplayWidth(L"\x0416"), 1U);
}

TEST(DisplayTextTest, ATextThatIsTooWideEndsInAnEllipsis) {
    EXPECT_EQ(Cut(L"abcdef", 6), L"abcdef");
    EXPECT_EQ(Cut(L"abcdef", 5), L"abcd\x2026");
    EXPECT_EQ(Cut(L"abcdef", 1), L"\x2026");
    EXPECT_EQ(Cut(L"abcdef", 0), L"");
    EXPECT_EQ(Cut(L"\x4e16\x754c\x4e16", 5), L"\x4e16\x754c\x2026");
    EXPECT_EQ(Cut(L"\x4e16\x754c\x4e16", 4), L"\x4e16\x2026");
    EXPECT_EQ(Cut(L"e\x0301"
                  L"e\x0301"
                  L"e\x0301",
                  2),
              L"e\x0301\x2026");
    EXPECT_EQ(Cut(L"\U0001F600\U0001F600", 3), L"\U0001F600\x2026");
}

TEST(DisplayTextTest, APathThatIsTooWideBeginsWithAnEllipsis) {
    EXPECT_EQ(CutBeginning(L"/a/part", 7), L"/a/part");
    EXPECT_EQ(CutBeginning(L"/a/part", 6), L"\x2026/part");
    EXPECT_EQ(CutBeginning(L"/a/part", 1), L"\x2026");
    EXPECT_EQ(CutBeginning(L"/a/part", 0), L"");
    EXPECT_EQ(CutBeginning(L"\x4e16\x754c\x4e16", 4), L"\x2026\x4e16");
    EXPECT_EQ(CutBeginning(L"ae\x0301x", 2), L"\x2026x");
    EXPECT_EQ(CutBeginning(L"\U0001F600\U0001F600", 3), L"\x2026\U0001F600");
}

TEST(DisplayTextTest, OneLineHasNothingThatATerminalObeys) {
    EXPECT_EQ(OneLine(L"a\r\nb\tc"), L"a  b c");
    EXPECT_EQ(OneLine(L"\x1b[31mred\x7f\x9b"), L" [31mred  ");
    EXPECT_EQ(OneLine(L"a\x202e"
                      L"b\x2066"),
              L"a b ");
    EXPECT_EQ(OneLine(L"a\x200e\x200f\x061c"
                      L"b"),
              L"a   b");
    EXPECT_EQ(OneLine(std::wstring(1, wchar_t{0xdc80}) + L"x"), L"\xfffdx");
    EXPECT_EQ(OneLine(L"\U0001F600"), L"\U0001F600");
}

} // namespace
