#include "CommonControllerLib/PathFuncs.h"

#include <gtest/gtest.h>

namespace {

using PathFuncs::Join;

TEST(PathFuncsTest, PutsOneBackslashBetweenParts) {
    EXPECT_EQ(Join(L"C:\\a", L"b"), L"C:\\a\\b");
    EXPECT_EQ(Join(L"a", L"b", L"c"), L"a\\b\\c");
    EXPECT_EQ(Join(L"a", L"b", L"c", L"d"), L"a\\b\\c\\d");
}

TEST(PathFuncsTest, ResultThatEndsInABackslashGetsNoSecondOne) {
    EXPECT_EQ(Join(L"C:\\a\\", L"b"), L"C:\\a\\b");
    EXPECT_EQ(Join(L"\\", L"b"), L"\\b");
}

TEST(PathFuncsTest, EmptyPartsAreSkipped) {
    EXPECT_EQ(Join(L"a", L"", L"c"), L"a\\c");
    EXPECT_EQ(Join(L"", L"b"), L"b");
    EXPECT_EQ(Join(L"a", L""), L"a");
    EXPECT_EQ(Join(L"", L""), L"");
    EXPECT_EQ(Join(L"", L"", L"", L"d"), L"d");
}

TEST(PathFuncsTest, SlashAtTheEndOfTheResultDoesNotCount) {
    EXPECT_EQ(Join(L"a/", L"b"), L"a/\\b");
}

TEST(PathFuncsTest, BackslashAtTheFrontOfAPartDoesNotCount) {
    EXPECT_EQ(Join(L"a", L"\\b"), L"a\\\\b");
}

TEST(PathFuncsTest, NothingIsNormalised) {
    EXPECT_EQ(Join(L"C:\\a\\..", L"D:\\x//y"), L"C:\\a\\..\\D:\\x//y");
}

} // namespace
