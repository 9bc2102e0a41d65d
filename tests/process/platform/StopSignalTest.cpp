#include "platform/processes/StopSignal.h"

#include <gtest/gtest.h>

#include "kit/StopRequest.h"
#include "kit/TestProcess.h"

using platform::StopSignal;

TEST(StopSignalTest, NothingIsSignalledBeforeAnybodyAsks) {
    const StopSignal signal;
    EXPECT_TRUE(platform::IsProcessRunning(signal.Handle()));
}

TEST(StopSignalTest, ARequestToStopRaisesTheEvent) {
    const StopSignal signal;
    if (!AskThisProcessToStop()) {
        GTEST_SKIP() << "no console to press Ctrl-C in";
    }
    EXPECT_TRUE(test_support::WaitUntilSignalled(signal.Handle()));
}

TEST(StopSignalTest, AnotherCanFollow) {
    { const StopSignal signal; }
    const StopSignal signal;
    EXPECT_TRUE(platform::IsProcessRunning(signal.Handle()));
    if (!AskThisProcessToStop()) {
        GTEST_SKIP() << "no console to press Ctrl-C in";
    }
    EXPECT_TRUE(test_support::WaitUntilSignalled(signal.Handle()));
}
