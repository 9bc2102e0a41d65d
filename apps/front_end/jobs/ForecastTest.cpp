#include "front_end/jobs/Forecast.h"

#include <gtest/gtest.h>

namespace {

using front_end::ForecastOf;
using front_end::JobRow;
using front_end::JobsProgress;
using front_end::ProgressOf;
using front_end::TimeLeft;

JobRow Row(JobStatus status, std::int32_t progress = 0) {
    JobRow row;
    row.job.status = status;
    row.job.startTime = L"2026-03-05T07:10:00Z";
    row.progress = progress;
    return row;
}

constexpr std::int64_t start = 1772694600;

TEST(ForecastTest, EndedJobsCountWholeAndRunningOnesAsFarAsTheyAre) {
    const JobRow failed = Row(JobStatus::Failed, 30);
    const JobRow running = Row(JobStatus::Running, 50);
    const JobRow queued = Row(JobStatus::Queued, 90);
    const JobsProgress progress = ProgressOf({&failed, &running, &queued});
    EXPECT_DOUBLE_EQ(progress.done, 1.5);
    EXPECT_EQ(progress.Percent(), 50);
    EXPECT_FALSE(progress.mayStall);
    EXPECT_EQ(ProgressOf({}).Percent(), 0);
}

TEST(ForecastTest, TheRateOfTheObservationGoesOn) {
    const auto forecast = ForecastOf({10, 2, false}, {10, 4, false}, 60);
    EXPECT_DOUBLE_EQ(forecast.jobsPerMinute.value(), 2);
    EXPECT_EQ(forecast.left, 180);
}

TEST(ForecastTest, NewJobsMakeItLonger) {
    EXPECT_EQ(ForecastOf({10, 2, false}, {12, 4, false}, 60).left, 240);
}

TEST(ForecastTest, WhatIsUnknownIsNotGuessed) {
    EXPECT_EQ(ForecastOf({10, 2, false}, {10, 2, false}, 600).left, std::nullopt);
    EXPECT_EQ(ForecastOf({10, 2, false}, {10, 2, false}, 600).jobsPerMinute, std::nullopt);
    EXPECT_EQ(ForecastOf({10, 2, false}, {10, 3, false}, 2).left, std::nullopt);
    EXPECT_EQ(ForecastOf({10, 2, false}, {10, 1, false}, 60).left, std::nullopt); // a deleted job
}

TEST(ForecastTest, AJobThatItsUserHoldsMakesTheEndUnknownButNotTheRate) {
    JobRow held = Row(JobStatus::Queued);
    held.job.waitReason = L"hold";
    EXPECT_TRUE(ProgressOf({&held}).mayStall);
    held.job.waitReason = L"resource";
    EXPECT_FALSE(ProgressOf({&held}).mayStall);
    const auto forecast = ForecastOf({2, 0, true}, {2, 1, true}, 60);
    EXPECT_EQ(forecast.left, std::nullopt);
    EXPECT_DOUBLE_EQ(forecast.jobsPerMinute.value(), 1);
}

TEST(ForecastTest, ARunningJobTakesAsLongForTheRestAsForTheBeginning) {
    EXPECT_EQ(TimeLeft(Row(JobStatus::Running, 25), start + 20), 60);
    EXPECT_EQ(TimeLeft(Row(JobStatus::Running, 100), start + 20), 0);
    EXPECT_EQ(TimeLeft(Row(JobStatus::Running, 0), start + 20), std::nullopt);
    EXPECT_EQ(TimeLeft(Row(JobStatus::Running, 25), start + 2), std::nullopt);
    EXPECT_EQ(TimeLeft(Row(JobStatus::Canceling, 25), start + 20), std::nullopt);
    EXPECT_EQ(TimeLeft(Row(JobStatus::Success, 100), start + 20), std::nullopt);
    JobRow withoutStart = Row(JobStatus::Running, 25);
    withoutStart.job.startTime.clear();
    EXPECT_EQ(TimeLeft(withoutStart, start + 20), std::nullopt);
}

} // namespace
