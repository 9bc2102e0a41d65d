#include "controller_host/RetryPolicy.h"

#include <gtest/gtest.h>

namespace {

using retry_policy::NextAttempt;
using retry_policy::ReasonToStop;

TEST(RetryPolicyTest, WithoutLimitsAnAttemptGoesOn) {
    EXPECT_EQ(ReasonToStop({}, {1, 1}, 1000000000000), L"");
}

TEST(RetryPolicyTest, TheTimeLimitCountsFromTheStart) {
    Scheduling scheduling;
    scheduling.timeLimit = 10;
    EXPECT_EQ(ReasonToStop(scheduling, {100, 109}, 109), L"");
    EXPECT_EQ(ReasonToStop(scheduling, {100, 110}, 110), L"it ran longer than its time limit of 10 s.");
}

TEST(RetryPolicyTest, TheSilenceLimitCountsFromTheLastSign) {
    Scheduling scheduling;
    scheduling.silenceLimit = 10;
    EXPECT_EQ(ReasonToStop(scheduling, {100, 200}, 209), L"");
    EXPECT_EQ(ReasonToStop(scheduling, {100, 200}, 210), L"it has shown neither progress nor output for 10 s.");
}

TEST(RetryPolicyTest, AFailedJobRunsAgainAsOftenAsAsked) {
    Scheduling scheduling;
    EXPECT_EQ(NextAttempt(scheduling, 1, true, 100), std::nullopt);
    scheduling.retries = 2;
    scheduling.retryDelay = 30;
    EXPECT_EQ(NextAttempt(scheduling, 1, false, 100), 130);
    EXPECT_EQ(NextAttempt(scheduling, 2, false, 100), 130);
    EXPECT_EQ(NextAttempt(scheduling, 3, false, 100), std::nullopt);
}

TEST(RetryPolicyTest, BackoffDoublesTheDelayUpToADay) {
    Scheduling scheduling;
    scheduling.retries = 100;
    scheduling.retryDelay = 30;
    scheduling.retryBackoff = true;
    EXPECT_EQ(NextAttempt(scheduling, 1, false, 0), 30);
    EXPECT_EQ(NextAttempt(scheduling, 3, false, 0), 120);
    EXPECT_EQ(NextAttempt(scheduling, 100, false, 0), 86400);
    scheduling.retryDelay = 100000;
    EXPECT_EQ(NextAttempt(scheduling, 50, false, 0), 100000);
}

TEST(RetryPolicyTest, AfterACrashOnly) {
    Scheduling scheduling;
    scheduling.retries = 1;
    scheduling.retryOnlyAfterCrash = true;
    EXPECT_EQ(NextAttempt(scheduling, 1, false, 5), std::nullopt);
    EXPECT_EQ(NextAttempt(scheduling, 1, true, 5), 5);
}

} // namespace
