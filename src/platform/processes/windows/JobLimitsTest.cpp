#include "platform/processes/windows/JobLimits.h"

#include <gtest/gtest.h>

TEST(JobLimitsTest, WithoutAMemoryLimitOnlyTheEndOfTheOwnerCounts) {
    const auto job = platform::JobLimitsOf({0, 100});
    EXPECT_EQ(job.BasicLimitInformation.LimitFlags, static_cast<DWORD>(JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE));
    EXPECT_EQ(job.JobMemoryLimit, 0U);
}

TEST(JobLimitsTest, TheMemoryLimitHoldsForAllProcessesTogether) {
    const auto job = platform::JobLimitsOf({std::int64_t{5} << 30, 0});
    EXPECT_EQ(job.BasicLimitInformation.LimitFlags,
              static_cast<DWORD>(JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE | JOB_OBJECT_LIMIT_JOB_MEMORY));
    EXPECT_EQ(job.JobMemoryLimit, SIZE_T{5} << 30);
    EXPECT_EQ(job.ProcessMemoryLimit, 0U);
}

TEST(JobLimitsTest, TheProcessorTimeIsAHardPartOfAllCores) {
    const auto rate = platform::CpuRateOf({0, 150}, 4);
    EXPECT_EQ(rate.ControlFlags,
              static_cast<DWORD>(JOB_OBJECT_CPU_RATE_CONTROL_ENABLE | JOB_OBJECT_CPU_RATE_CONTROL_HARD_CAP));
    EXPECT_EQ(rate.CpuRate, 3750U);
}

TEST(JobLimitsTest, TheProcessorTimeIsAtLeastAHundredthAndAtMostAll) {
    EXPECT_EQ(platform::CpuRateOf({0, 1}, 128).CpuRate, 1U);
    EXPECT_EQ(platform::CpuRateOf({0, 800}, 4).CpuRate, 10000U);
}
