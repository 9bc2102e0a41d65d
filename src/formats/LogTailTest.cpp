#include "formats/LogTail.h"

#include <gtest/gtest.h>

#include "kit/TemporaryDirectory.h"

using run_protocol::LastLines;
using run_protocol::ReadLogTail;

TEST(LogTailTest, AShortTextIsShownWhole) {
    EXPECT_EQ(LastLines(""), L"");
    EXPECT_EQ(LastLines("one"), L"one");
    EXPECT_EQ(LastLines("one\ntwo\n"), L"one\ntwo");
}

TEST(LogTailTest, BlankLinesAtBothEndsAreLeftOut) {
    EXPECT_EQ(LastLines("\n\none\n\ntwo\n"), L"one\n\ntwo");
    EXPECT_EQ(LastLines("one\n\n \r\n"), L"one");
    EXPECT_EQ(LastLines("\n\n"), L"");
}

TEST(LogTailTest, OfManyLinesTheLastTenAreShown) {
    std::string text;
    for (int number = 1; number <= 30; ++number) {
        text += std::to_string(number) + "\n";
    }
    EXPECT_EQ(LastLines(text), L"21\n22\n23\n24\n25\n26\n27\n28\n29\n30");
}

TEST(LogTailTest, AnEndlessLineIsCut) {
    EXPECT_EQ(LastLines(std::string(100'000, 'x')), std::wstring(2000, L'x'));
}

TEST(LogTailTest, OfALargeFileOnlyTheEndIsRead) {
    const TemporaryDirectory directory;
    WriteTextFile(directory / L"scenario.log", std::string(1'000'000, 'x') + "\nlast\n");
    EXPECT_EQ(ReadLogTail(directory / L"scenario.log"), std::wstring(1995, L'x') + L"\nlast");
}

TEST(LogTailTest, AMissingFileHasNoLines) {
    const TemporaryDirectory directory;
    EXPECT_EQ(ReadLogTail(directory / L"scenario.log"), L"");
}
