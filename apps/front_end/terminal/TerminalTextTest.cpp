#include "front_end/terminal/TerminalText.h"

#include <gtest/gtest.h>

namespace {

std::string Taken(std::string_view bytes) {
    return front_end::TerminalText().Take(bytes);
}

/// The result when each byte arrives alone.
std::string TakenByteByByte(std::string_view bytes) {
    front_end::TerminalText text;
    std::string taken;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        taken += text.Take(bytes.substr(i, 1));
    }
    return taken;
}

TEST(TerminalTextTest, LinesTabsAndCharactersStay) {
    EXPECT_EQ(Taken("a\tb\nGr\xc3\xb6\xc3\x9f"
                    "e \xf0\x9f\x98\x80\n"),
              "a\tb\nGr\xc3\xb6\xc3\x9f"
              "e \xf0\x9f\x98\x80\n");
}

TEST(TerminalTextTest, WhatSteersATerminalIsShownAsInC) {
    EXPECT_EQ(Taken("\x1b[2J\x7f"), "\\u001b[2J\\u007f");
    EXPECT_EQ(Taken(std::string_view("\0", 1)), "\\u0000");
    EXPECT_EQ(Taken("\xc2\x9b"), "\\u009b");
    EXPECT_EQ(Taken("\xe2\x80\xae"), "\\u202e");
}

TEST(TerminalTextTest, ALineEndOfWindowsIsALineEnd) {
    EXPECT_EQ(Taken("a\r\nb\n"), "a\nb\n");
    EXPECT_EQ(Taken("a\rb"), "a\\rb");
    EXPECT_EQ(Taken("\r\r\n"), "\\r\n");
}

TEST(TerminalTextTest, BytesThatAreNoTextAreReplaced) {
    const std::string replacement = "\xef\xbf\xbd";
    EXPECT_EQ(Taken("a\xff"
                    "b\x80"),
              "a" + replacement + "b" + replacement);
    EXPECT_EQ(Taken("\xc3"
                    "a"),
              replacement + "a");
    EXPECT_EQ(Taken("\xed\xa0\x80"), replacement); // a surrogate
}

TEST(TerminalTextTest, PiecesMakeTheSameTextAsTheWhole) {
    for (const std::string_view bytes : {"a\r\nb", "\xc3\xb6", "\xe4\xb8\x96\xe7\x95\x8c", "\xf0\x9f\x98\x80\x1b[0m",
                                         "\xf0\x9f"
                                         "ab"}) {
        EXPECT_EQ(TakenByteByByte(bytes), Taken(bytes)) << bytes;
    }
}

TEST(TerminalTextTest, ABeginningIsKeptUntilItsRestComes) {
    front_end::TerminalText text;
    EXPECT_EQ(text.Take("a\xe4\xb8"), "a");
    EXPECT_EQ(text.Take(""), "");
    EXPECT_EQ(text.Take("\x96"
                        "b\r"),
              "\xe4\xb8\x96"
              "b");
    EXPECT_EQ(text.Take("c"), "\\rc");
}

} // namespace
