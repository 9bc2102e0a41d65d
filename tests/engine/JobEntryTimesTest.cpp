#include "engine/JobEntry.h"

#include "platform/Environment.h"

#include <gtest/gtest.h>

namespace {

constexpr std::int64_t threeHours = 3 * 3600;

/// In a zone three hours before UTC, without daylight saving.
class JobEntryTimesTest : public testing::Test {
protected:
    static void SetUpTestSuite() { platform::SetEnvironment(L"TZ", L"EAST-3"); }
    static void TearDownTestSuite() { platform::SetEnvironment(L"TZ", L""); }
};

TEST_F(JobEntryTimesTest, TimeZeroIsTheStartOf1970) {
    EXPECT_EQ(JobEntry::CreateTimeString(0), L"1970-01-01T00:00:00Z");
}

TEST_F(JobEntryTimesTest, FieldsArePaddedWithZeros) {
    EXPECT_EQ(JobEntry::CreateTimeString(1709622489), L"2024-03-05T07:08:09Z");
    EXPECT_EQ(JobEntry::CreateTimeString(4102444799), L"2099-12-31T23:59:59Z");
}

TEST_F(JobEntryTimesTest, TimesAreWrittenInUtcAndReadAsLocal) {
    const std::int64_t time = 1709622489;
    EXPECT_EQ(JobEntry::ConvertTimeStringToStruct(JobEntry::CreateTimeString(time)), time - threeHours);
}

TEST_F(JobEntryTimesTest, EmptyOrUnreadableTextIsMinusOne) {
    for (const wchar_t* text : {L"", L"x", L"never", L"-", L"Z2024-03-05T07:08:09Z"}) {
        EXPECT_EQ(JobEntry::ConvertTimeStringToStruct(text), -1) << text;
    }
}

TEST_F(JobEntryTimesTest, TimeBefore1970IsMinusOne) {
    EXPECT_EQ(JobEntry::ConvertTimeStringToStruct(L"0000-01-01T00:00:00Z"), -1);
    EXPECT_EQ(JobEntry::ConvertTimeStringToStruct(L"1969-12-31T23:59:59Z"), -1);
}

TEST_F(JobEntryTimesTest, FieldsBeyondTheirRangeCarryOver) {
    EXPECT_EQ(JobEntry::ConvertTimeStringToStruct(L"2024-02-30T00:00:00Z"),
              JobEntry::ConvertTimeStringToStruct(L"2024-03-01T00:00:00Z"));
}

TEST_F(JobEntryTimesTest, TextBehindTheTimeIsNotLookedAt) {
    EXPECT_EQ(JobEntry::ConvertTimeStringToStruct(L"2024-03-05T07:08:09"),
              JobEntry::ConvertTimeStringToStruct(L"2024-03-05T07:08:09Z and more"));
}

TEST_F(JobEntryTimesTest, StartAndEndTimeGoIntoTheRecord) {
    JobEntry job;
    job.SetStartTime(1709622489);
    job.SetEndTime(1709622490);
    EXPECT_EQ(job.GetJobListInfo().startTime, L"2024-03-05T07:08:09Z");
    EXPECT_EQ(job.GetJobListInfo().endTime, L"2024-03-05T07:08:10Z");
    EXPECT_EQ(job.GetStartTime(), 1709622489 - threeHours);
}

TEST_F(JobEntryTimesTest, JobThatNeverStartedHasStartTimeMinusOne) {
    EXPECT_EQ(JobEntry().GetStartTime(), -1);
}

} // namespace
