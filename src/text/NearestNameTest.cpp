#include "text/NearestName.h"

#include <string>

#include <gtest/gtest.h>

namespace {

TEST(NearestNameTest, ASlipFindsTheNameThatWasMeant) {
    const std::vector<std::string_view> names = {"list", "watch", "wait", "release"};
    EXPECT_EQ(text::NearestName(names, "lsit"), "list");
    EXPECT_EQ(text::NearestName(names, "Watch"), "watch");
    EXPECT_EQ(text::NearestName(names, "relese"), "release");
}

TEST(NearestNameTest, WhatIsLikeNoneHasNoSuggestion) {
    const std::vector<std::string_view> names = {"list", "watch"};
    EXPECT_EQ(text::NearestName(names, "parameters"), "");
    EXPECT_EQ(text::NearestName(names, std::string(65, 'l')), "");
    EXPECT_EQ(text::NearestName({}, "list"), "");
}

} // namespace
