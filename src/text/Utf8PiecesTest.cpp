#include "text/Utf8Pieces.h"

#include <gtest/gtest.h>

namespace {

using text::Utf8Pieces;

TEST(Utf8PiecesTest, ACharacterMayComeInPiecesOfAnySize) {
    const std::string bytes = "a\xc3\xa9\xe2\x82\xac\xf0\x9f\x98\x80z";
    for (std::size_t size = 1; size <= bytes.size(); ++size) {
        Utf8Pieces pieces;
        std::u32string characters;
        for (std::size_t begin = 0; begin < bytes.size(); begin += size) {
            characters += pieces.Take(bytes.substr(begin, size));
        }
        EXPECT_EQ(characters, U"a\u00e9\u20ac\U0001F600z") << size;
        EXPECT_EQ(pieces.TakeRest(), U"");
    }
}

TEST(Utf8PiecesTest, WhatIsNoUtf8IsReplaced) {
    Utf8Pieces pieces;
    EXPECT_EQ(pieces.Take("a\xff\x80z"), U"a\ufffd\ufffdz");
    EXPECT_EQ(pieces.Take("\xed\xa0\x80"), U"\ufffd"); // a surrogate
    EXPECT_EQ(pieces.Take("\xe2\x82"), U"");
    EXPECT_EQ(pieces.Take("a"), U"\ufffd\ufffd"
                                U"a");
}

TEST(Utf8PiecesTest, AnIncompleteEndIsReplacedOnce) {
    Utf8Pieces pieces;
    EXPECT_EQ(pieces.Take("a\xf0\x9f\x98"), U"a");
    EXPECT_EQ(pieces.TakeRest(), U"\ufffd");
    EXPECT_EQ(pieces.TakeRest(), U"");
    EXPECT_EQ(pieces.Take("\x80"), U"\ufffd");
}

} // namespace
