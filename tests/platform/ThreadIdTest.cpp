#include "platform/system/ThreadId.h"

#include <future>

#include <gtest/gtest.h>

namespace {

TEST(ThreadIdTest, EveryThreadHasItsOwnNumber) {
    const std::uint64_t own = platform::OwnThreadNumber();
    EXPECT_NE(own, 0u);
    EXPECT_EQ(platform::OwnThreadNumber(), own);
    EXPECT_NE(std::async(std::launch::async, platform::OwnThreadNumber).get(), own);
}

} // namespace
