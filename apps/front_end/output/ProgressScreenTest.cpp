#include "front_end/output/ProgressScreen.h"

#include "formats/JobStates.h"
#include "kit/front_end/CommandContextFixture.h"

namespace {

using front_end::JobModel;
using front_end::ProgressScreen;

class ProgressScreenTest : public CommandContextFixture {
protected:
    /// The output since the last call.
    std::string TakeOutput() { return std::exchange(console.output, {}); }

    JobModel board{{Job(1, L"a.stl", JobStatus::Queued), Job(2, L"b.stl", JobStatus::Running)}};
};

TEST_F(ProgressScreenTest, WithoutATerminalAChangeIsALineInListOrder) {
    ProgressScreen screen(context, board);
    screen.Show({L"id2", L"id1", L"id2", L"unknown"});
    EXPECT_EQ(TakeOutput(), "Job 1 Queued, 0 %, Mesh report, a.stl\nJob 2 Running, 0 %, Mesh report, b.stl\n");
    screen.Show({});
    screen.Clear();
    EXPECT_EQ(TakeOutput(), "");
}

TEST_F(ProgressScreenTest, OnlyATerminalIsShownAgainByTime) {
    const ProgressScreen screen(context, board);
    EXPECT_EQ(screen.Interval(), std::nullopt);
    console.isTerminal = true;
    EXPECT_EQ(screen.Interval(), std::chrono::seconds(1));
}

TEST_F(ProgressScreenTest, ATableThatIsTheSameIsNotDrawnAgain) {
    console.BecomeTerminal(60, 24);
    ProgressScreen screen(context, board);
    screen.Show({});
    EXPECT_TRUE(TakeOutput().ends_with("Queued: 1, running: 1, ended: 0, time left unknown\x1b[K\n\x1b[J"));
    screen.Show({L"id1"});
    EXPECT_EQ(TakeOutput(), "");
}

TEST_F(ProgressScreenTest, AClockThatRunsOnIsDrawnWithoutAChange) {
    console.BecomeTerminal(60, 24);
    JobListInfo job = Job(1, L"a.stl", JobStatus::Running);
    job.startTime = L"2026-03-05T07:10:00Z";
    const JobModel running({job});
    ProgressScreen screen(context, running);
    screen.Show({});
    EXPECT_NE(TakeOutput().find(" 0:00 "), std::string::npos);
    context.now = [] { return std::int64_t{1772694665}; };
    screen.Show({});
    const std::string again = TakeOutput();
    EXPECT_TRUE(again.starts_with("\x1b[3A"));
    EXPECT_NE(again.find(" 1:05 "), std::string::npos);
}

TEST_F(ProgressScreenTest, RateAndTimeLeftAreShownOnceTheyAreKnown) {
    console.BecomeTerminal(120, 24);
    ProgressScreen screen(context, board);
    screen.Show({});
    EXPECT_NE(TakeOutput().find("]   0 %  Queued: 1, running: 1, ended: 0, time left unknown\x1b[K"),
              std::string::npos);
    board.Update(Status(2, JobStatus::Success));
    context.now = [] { return std::int64_t{1772694600 + 90}; };
    screen.Show({L"id2"});
    const std::string half = TakeOutput();
    EXPECT_NE(half.find("]  50 %  Queued: 1, running: 0, ended: 1, 40 jobs/h, 1:30 left\x1b[K"), std::string::npos)
        << half;
}

TEST_F(ProgressScreenTest, ARunningJobHasItsOwnTimeLeft) {
    console.BecomeTerminal(120, 24);
    JobListInfo job = Job(1, L"a.stl", JobStatus::Running);
    job.startTime = L"2026-03-05T07:09:00Z";
    job.progress = 25;
    const JobModel running({job});
    ProgressScreen screen(context, running);
    screen.Show({});
    const std::string table = TakeOutput();
    EXPECT_NE(table.find(" 25 %  1:00  3:00  Mesh report"), std::string::npos) << table;
}

TEST_F(ProgressScreenTest, AClearedTableIsDrawnWhereTheCursorIs) {
    console.BecomeTerminal(60, 24);
    ProgressScreen screen(context, board);
    screen.Clear();
    EXPECT_EQ(TakeOutput(), "");
    screen.Show({});
    const std::string table = TakeOutput();
    screen.Clear();
    EXPECT_EQ(TakeOutput(), "\x1b[4A\x1b[J");
    screen.Clear();
    EXPECT_EQ(TakeOutput(), "");
    screen.Show({});
    EXPECT_EQ(TakeOutput(), table);
}

TEST_F(ProgressScreenTest, WhatHadEndedBeforeOrIsDeletedHasNoRow) {
    console.BecomeTerminal(60, 24);
    JobModel jobs({Job(1, L"a.stl", JobStatus::Success), Job(2, L"b.stl", JobStatus::Running)});
    ProgressScreen screen(context, jobs);
    screen.Show({});
    const std::string before = TakeOutput();
    EXPECT_EQ(before.find("  1  Success"), std::string::npos);
    EXPECT_NE(before.find("  2  Running"), std::string::npos);
    jobs.Update(Status(2, unlistedStatus));
    screen.Show({L"id2"});
    EXPECT_EQ(TakeOutput().find("Deleted"), std::string::npos);
}

TEST_F(ProgressScreenTest, TheLowestTerminalHasOneRow) {
    console.BecomeTerminal(60, 1);
    ProgressScreen screen(context, board);
    screen.Show({});
    const std::string table = TakeOutput();
    EXPECT_NE(table.find("  2  Running"), std::string::npos);
    EXPECT_EQ(table.find("  1  Queued"), std::string::npos);
}

} // namespace
