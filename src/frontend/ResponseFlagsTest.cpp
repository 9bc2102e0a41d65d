#include "frontend/ResponseFlags.h"

#include "kit/Deadline.h"

#include <atomic>
#include <chrono>
#include <thread>

#include <gtest/gtest.h>

namespace {

using response_flags::ResponseFlag;

/// Uses the system clock: only the flag can end such a long wait.
TEST(ResponseFlagsTest, AWaitEndsWhenAnotherThreadRaisesTheFlag) {
    const test_support::Deadline deadline("a flag");
    ResponseFlag flag;
    std::atomic<bool> isRaised = false;
    std::thread raising([&] {
        std::this_thread::yield();
        isRaised = true;
        flag = true;
    });
    flag.WaitFor(std::chrono::hours(1));
    EXPECT_TRUE(isRaised);
    EXPECT_TRUE(flag);
    raising.join();
}

TEST(ResponseFlagsTest, ARaisedFlagIsNotWaitedFor) {
    const test_support::Deadline deadline("a flag");
    ResponseFlag flag;
    flag = true;
    flag.WaitFor(std::chrono::hours(1));
    EXPECT_TRUE(flag);
}

TEST(ResponseFlagsTest, AWaitWithoutAFlagEndsWithItsTime) {
    const ResponseFlag flag;
    flag.WaitFor(std::chrono::milliseconds(1));
    EXPECT_FALSE(flag);
}

} // namespace
