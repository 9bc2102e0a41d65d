#include "CommonControllerLib/JobEntry.h"

#include "kit/SystemHelpers.h"

#include <gtest/gtest.h>

#include <locale>
#include <sstream>
#include <string>

namespace {

/// A time zone five hours behind UTC in winter.
class JobEntryTimesTest : public testing::Test {
protected:
    static constexpr std::int64_t fiveHours = 5 * 3600;
    const ScopedTimeZone zone{"EST5EDT"};
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
    EXPECT_EQ(JobEntry::ConvertTimeStringToStruct(JobEntry::CreateTimeString(time)), time + fiveHours);
}

/// Writes thousands with a dot.
class GroupingNumbers : public std::numpunct<wchar_t> {
protected:
    char_type do_thousands_sep() const override { return L'.'; }
    std::string do_grouping() const override { return "\3"; }
};

/// Sets another global locale during its lifetime.
class ForeignLocale {
public:
    ForeignLocale() : previous(std::locale::global(std::locale(std::locale(), new GroupingNumbers))) {}
    ~ForeignLocale() { std::locale::global(previous); }
    ForeignLocale(const ForeignLocale&) = delete;
    ForeignLocale& operator=(const ForeignLocale&) = delete;

private:
    const std::locale previous;
};

TEST_F(JobEntryTimesTest, TimesAreTheSameInEveryLocale) {
    const ForeignLocale foreign;
    std::wostringstream number;
    number << 2024;
    ASSERT_EQ(number.str(), L"2.024");
    EXPECT_EQ(JobEntry::CreateTimeString(1709622489), L"2024-03-05T07:08:09Z");
    EXPECT_EQ(JobEntry::ConvertTimeStringToStruct(L"2024-03-05T07:08:09Z"), 1709622489 + fiveHours);
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
    EXPECT_EQ(job.GetStartTime(), 1709622489 + fiveHours);
}

TEST_F(JobEntryTimesTest, JobThatNeverStartedHasStartTimeMinusOne) {
    EXPECT_EQ(JobEntry().GetStartTime(), -1);
}

} // namespace
