#include "platform/system/Clock.h"

#include <limits>
#include <ostream>

#include <gtest/gtest.h>

#include "kit/SystemHelpers.h"

namespace platform {

bool operator==(const CalendarTime& left, const CalendarTime& right) {
    return left.year == right.year && left.month == right.month && left.day == right.day && left.hour == right.hour &&
           left.minute == right.minute && left.second == right.second;
}

void PrintTo(const CalendarTime& time, std::ostream* out) {
    *out << time.year << '-' << time.month << '-' << time.day << ' ' << time.hour << ':' << time.minute << ':'
         << time.second;
}

} // namespace platform

namespace {

using platform::CalendarTime;
using platform::FromLocal;
using platform::ToLocal;
using platform::ToUtc;

constexpr std::int64_t lastTime = 32'535'215'999;

TEST(ClockTest, NowIsAfterThisWasWritten) {
    EXPECT_GT(platform::Now(), 1'704'067'200); // 2024-01-01
    EXPECT_LT(platform::Now(), lastTime);
}

TEST(ClockTest, UtcFields) {
    EXPECT_EQ(ToUtc(1'709'622'489), (CalendarTime{2024, 3, 5, 7, 8, 9}));
    EXPECT_EQ(ToUtc(0), (CalendarTime{1970, 1, 1, 0, 0, 0}));
    EXPECT_EQ(ToUtc(951'782'400), (CalendarTime{2000, 2, 29, 0, 0, 0}));
    EXPECT_EQ(ToUtc(lastTime), (CalendarTime{3000, 12, 31, 23, 59, 59}));
}

TEST(ClockTest, TimesThatTheWindowsRuntimeRefusesAreAllZero) {
    for (const std::int64_t time : {std::int64_t{-1}, lastTime + 1, std::numeric_limits<std::int64_t>::min(),
                                    std::numeric_limits<std::int64_t>::max()}) {
        EXPECT_EQ(ToUtc(time), CalendarTime{}) << time;
        EXPECT_EQ(ToLocal(time), CalendarTime{}) << time;
    }
}

TEST(ClockTest, LocalFieldsFollowTheTimeZone) {
    {
        const ScopedTimeZone zone("UTC0");
        EXPECT_EQ(ToLocal(1'709'622'489), (CalendarTime{2024, 3, 5, 7, 8, 9}));
    }
    const ScopedTimeZone zone("EST5EDT");
    EXPECT_EQ(ToLocal(1'709'622'489), (CalendarTime{2024, 3, 5, 2, 8, 9}));
    if (!OnWindows()) { // TZ has daylight saving on Windows, but not under Wine
        EXPECT_EQ(ToLocal(1'720'000'000), (CalendarTime{2024, 7, 3, 5, 46, 40}));
    }
}

TEST(ClockTest, LocalTimesAreReadAsStandardTime) {
    {
        const ScopedTimeZone zone("UTC0");
        EXPECT_EQ(FromLocal({2024, 3, 5, 7, 8, 9}), 1'709'622'489);
        EXPECT_EQ(FromLocal({1970, 1, 1, 0, 0, 0}), 0);
        EXPECT_EQ(FromLocal({3000, 12, 31, 23, 59, 59}), lastTime);
    }
    const ScopedTimeZone zone("EST5EDT");
    EXPECT_EQ(FromLocal({2024, 3, 5, 2, 8, 9}), 1'709'622'489);
    EXPECT_EQ(FromLocal({2024, 7, 3, 5, 46, 40}), 1'720'003'600); // an hour later than local time said
}

TEST(ClockTest, ZonesEastOfGreenwichAndRulesOfTheirOwn) {
    const ScopedTimeZone zone("CET-1CEST,M3.5.0,M10.5.0/3");
    EXPECT_EQ(ToLocal(1'709'622'489), (CalendarTime{2024, 3, 5, 8, 8, 9}));
    EXPECT_EQ(FromLocal({2024, 3, 5, 8, 8, 9}), 1'709'622'489);
    EXPECT_EQ(FromLocal({2024, 7, 1, 1, 0, 0}), 1'719'792'000);
    EXPECT_EQ(FromLocal({1970, 1, 1, 0, 59, 59}), -1);
    EXPECT_EQ(FromLocal({1970, 1, 1, 1, 0, 0}), 0);
}

TEST(ClockTest, FieldsBeyondTheirRangeCarryOver) {
    const ScopedTimeZone zone("UTC0");
    EXPECT_EQ(FromLocal({2024, 14, 1, 0, 0, 0}), FromLocal({2025, 2, 1, 0, 0, 0}));
    EXPECT_EQ(FromLocal({2024, 0, 1, 0, 0, 0}), FromLocal({2023, 12, 1, 0, 0, 0}));
    EXPECT_EQ(FromLocal({2024, -11, 1, 0, 0, 0}), FromLocal({2023, 1, 1, 0, 0, 0}));
    EXPECT_EQ(FromLocal({2024, 2, 30, 0, 0, 0}), FromLocal({2024, 3, 1, 0, 0, 0}));
    EXPECT_EQ(FromLocal({2024, 3, 0, 0, 0, 0}), FromLocal({2024, 2, 29, 0, 0, 0}));
    EXPECT_EQ(FromLocal({2024, 1, 1, 25, 61, 61}), FromLocal({2024, 1, 2, 2, 2, 1}));
    EXPECT_EQ(FromLocal({2024, 1, 1, 0, 0, -1}), FromLocal({2023, 12, 31, 23, 59, 59}));
}

TEST(ClockTest, WhatCannotBeToldIsMinusOne) {
    const ScopedTimeZone zone("UTC0");
    constexpr std::int32_t smallest = std::numeric_limits<std::int32_t>::min();
    constexpr std::int32_t largest = std::numeric_limits<std::int32_t>::max();
    const CalendarTime table[] = {
        {},
        {1969, 12, 31, 23, 59, 59},
        {1969, 12, 31, 24, 0, 0},
        {1969, 13, 1, 0, 0, 0},
        {1970, 1, 0, 0, 0, 0},
        {1960, 200, 1, 0, 0, 0},
        {3001, 1, 1, 0, 0, 0},
        {9999, 1, 1, 0, 0, 0},
        {largest, largest, 1, 0, 0, 0},
        {smallest, smallest, 1, 0, 0, 0},
        {2024, smallest, 1, 0, 0, 0},
        {2024, largest, 1, 0, 0, 0},
    };
    for (const CalendarTime& fields : table) {
        EXPECT_EQ(FromLocal(fields), -1) << testing::PrintToString(fields);
    }
}

TEST(ClockTest, ALocalTimeBeforeTheEpochIsMinusOneThoughUtcIsNot) {
    const ScopedTimeZone zone("EST5EDT");
    EXPECT_EQ(ToLocal(0), (CalendarTime{1969, 12, 31, 19, 0, 0}));
    EXPECT_EQ(FromLocal({1969, 12, 31, 19, 0, 0}), -1);
}

TEST(ClockTest, TheLocalStampIsAFileName) {
    {
        const ScopedTimeZone zone("UTC0");
        EXPECT_EQ(platform::LocalStamp(1'709'622'489), L"20240305_070809");
    }
    const ScopedTimeZone zone("EST5EDT");
    EXPECT_EQ(platform::LocalStamp(1'709'622'489), L"20240305_020809");
}

TEST(ClockTest, UtcTimesAreTheSameInEveryTimeZone) {
    const ScopedTimeZone zone("EST5EDT");
    EXPECT_EQ(platform::UtcStamp(1'709'622'489), L"20240305T070809Z");
    EXPECT_EQ(platform::UtcTimestamp(1'709'622'489), L"2024-03-05T07:08:09Z");
    EXPECT_EQ(platform::UtcText(1'709'622'489), L"2024-03-05 07:08:09 UTC");
}

TEST(ClockTest, AnUnknownTimeIsWrittenAsZeros) {
    EXPECT_EQ(platform::UtcTimestamp(-1), L"0000-00-00T00:00:00Z");
}

} // namespace
