#include "kit/front_end/CadjobsFixture.h"

#include <sstream>

namespace {

class WatchTest : public CadjobsFixture {
protected:
    /// The job numbers in the last table, from the top.
    std::vector<std::string> NumbersInLastTable() const {
        std::istringstream lines(console.output.substr(console.output.rfind("Job  State")));
        std::vector<std::string> numbers;
        std::string line;
        for (std::getline(lines, line); std::getline(lines, line) && line.starts_with("  ");) {
            numbers.push_back(line.substr(2, 1));
        }
        return numbers;
    }
};

TEST_F(WatchTest, WithoutATerminalEachChangeIsALine) {
    host.jobs = {Job(1, L"a.stl", JobStatus::Success), Job(2, L"b.stl", JobStatus::Queued)};
    Script({[this] { host.Report(Status(2, JobStatus::Running, 40)); },
            [this] { host.Report(Status(2, JobStatus::Failed, 40)); }});
    EXPECT_EQ(Run({L"watch"}), 0);
    EXPECT_EQ(console.output, "Job 2 Queued, 0 %, Mesh report, b.stl\n"
                              "Job 2 Running, 40 %, Mesh report, b.stl\n"
                              "Job 2 Failed, 40 %, Mesh report, b.stl\n");
}

TEST_F(WatchTest, OnATerminalATableIsDrawnOver) {
    console.BecomeTerminal(100, 24);
    host.jobs = {Job(1, L"a.stl", JobStatus::Success), Job(2, L"b.stl", JobStatus::Queued)};
    Script({[this] { host.Report(Status(2, JobStatus::Running, 45)); }});
    EXPECT_EQ(Run({L"watch"}), 0);
    EXPECT_EQ(
        console.output,
        "Job  State                       Progress  Time  Left  Scenario     Input  Output folder, or what …\x1b[K\n"
        "  2  Queued  [....................]   0 %              Mesh report  b.stl\x1b[K\n"
        "[....................]   0 %  Queued: 1, running: 0, ended: 1, time left unknown\x1b[K\n"
        "\x1b[J"
        "\x1b[3A"
        "Job  State                        Progress  Time  Left  Scenario     Input  Output folder, or what…\x1b[K\n"
        "  2  Running  [#########...........]  45 %              Mesh report  b.stl\x1b[K\n"
        "[#########...........]  45 %  Queued: 0, running: 1, ended: 1, time left unknown\x1b[K\n"
        "\x1b[J"
        "\n");
}

TEST_F(WatchTest, ALowTerminalShowsWhatRunsFirst) {
    console.BecomeTerminal(60, 5);
    host.jobs = {Job(1, L"a.stl", JobStatus::Queued), Job(2, L"b.stl", JobStatus::Running),
                 Job(3, L"c.stl", JobStatus::Queued), Job(4, L"d.stl", JobStatus::Canceling)};
    Script({});
    EXPECT_EQ(Run({L"watch"}), 0);
    EXPECT_EQ(console.output.find("a.stl"), std::string::npos);
    EXPECT_NE(console.output.find("  2  Running"), std::string::npos);
    EXPECT_NE(console.output.find("  4  Canceling"), std::string::npos);
    EXPECT_NE(console.output.find("Queued: 2, running: 2, ended: 0"), std::string::npos);
}

TEST_F(WatchTest, WhatRunsAndTheLatestEndsStayInView) {
    console.BecomeTerminal(60, 6);
    for (std::int32_t number = 1; number <= 5; ++number) {
        host.jobs.push_back(Job(number, std::to_wstring(number) + L".stl", JobStatus::Queued));
    }
    Script({[this] {
        for (const std::int32_t number : {2, 1, 4}) {
            host.Report(Status(number, JobStatus::Failed));
        }
        host.Report(Status(5, JobStatus::Running));
    }});
    EXPECT_EQ(Run({L"watch"}), 0);
    EXPECT_EQ(NumbersInLastTable(), (std::vector<std::string>{"5", "3", "4"}));
}

TEST_F(WatchTest, EndsAreShownLatestFirstBelowWhatWaits) {
    console.BecomeTerminal(60, 24);
    host.jobs = {Job(1, L"a.stl", JobStatus::Queued), Job(2, L"b.stl", JobStatus::Queued),
                 Job(3, L"c.stl", JobStatus::Queued), Job(4, L"d.stl", JobStatus::Queued)};
    Script({[this] {
                host.Report(Status(2, JobStatus::Failed));
                host.Report(Status(4, JobStatus::Running));
            },
            [this] { host.Report(Status(1, JobStatus::Success)); }});
    EXPECT_EQ(Run({L"watch"}), 0);
    EXPECT_EQ(NumbersInLastTable(), (std::vector<std::string>{"4", "3", "1", "2"}));
}

TEST_F(WatchTest, WaitingJobsTakeTheRoomThatNoEndNeeds) {
    console.BecomeTerminal(60, 6);
    host.jobs = {Job(1, L"a.stl", JobStatus::Queued), Job(2, L"b.stl", JobStatus::Queued),
                 Job(3, L"c.stl", JobStatus::Queued), Job(4, L"d.stl", JobStatus::Queued)};
    Script({});
    EXPECT_EQ(Run({L"watch"}), 0);
    EXPECT_EQ(NumbersInLastTable(), (std::vector<std::string>{"1", "2", "3"}));
}

TEST_F(WatchTest, ATerminalOfAnotherSizeIsCleared) {
    console.BecomeTerminal(60, 24);
    host.jobs = {Job(1, L"a.stl", JobStatus::Queued)};
    Script({[this] {
                console.BecomeTerminal(60, 48);
                host.Report(Status(1, JobStatus::Running));
            },
            [this] { host.Report(Status(1, JobStatus::Running, 50)); }});
    EXPECT_EQ(Run({L"watch"}), 0);
    const std::size_t cleared = console.output.find("\x1b[H\x1b[2JJob ");
    ASSERT_NE(cleared, std::string::npos) << console.output;
    EXPECT_EQ(console.output.find("\x1b[3A"), console.output.rfind("\x1b[3A"));
    EXPECT_GT(console.output.find("\x1b[3AJob "), cleared);
}

TEST_F(WatchTest, WhatLooksTheSameIsNotDrawnAgain) {
    console.BecomeTerminal(60, 24);
    host.jobs = {Job(1, L"a.stl", JobStatus::Running)};
    host.onAnswered = [this](const std::wstring&) {
        host.Report(Status(1, JobStatus::Running));
        stop.Raise();
    };
    EXPECT_EQ(Run({L"watch"}), 0);
    EXPECT_EQ(console.output.find("Job  State"), console.output.rfind("Job  State"));
}

TEST_F(WatchTest, NoLineReachesTheLastColumn) {
    console.BecomeTerminal(40, 24);
    host.jobs = {Job(1, L"a-very-long-name-of-an-input-file.stl", JobStatus::Running)};
    Script({});
    EXPECT_EQ(Run({L"watch"}), 0);
    EXPECT_EQ(console.output, "Job  State                     Progress\x1b[K\n"
                              "  1  Running  [....................]  …\x1b[K\n"
                              "Queued: 0, running: 1, ended: 0\x1b[K\n"
                              "\x1b[J"
                              "\n");
}

TEST_F(WatchTest, AJobThatComesLaterIsShown) {
    Script({[this] {
        host.jobs = {Job(7, L"new.stl", JobStatus::Running)};
        host.Report(Status(7, JobStatus::Running, 10));
    }});
    EXPECT_EQ(Run({L"watch"}), 0);
    EXPECT_EQ(console.output, "Job 7 Running, 10 %, Mesh report, new.stl\n");
}

TEST_F(WatchTest, ADeletedJobIsSaidSo) {
    host.jobs = {Job(1, L"a.stl", JobStatus::Success)};
    Script({[this] { host.Report(Status(1, static_cast<JobStatus>(-1))); }});
    EXPECT_EQ(Run({L"watch"}), 0);
    EXPECT_EQ(console.output, "Job 1 Deleted, 0 %, Mesh report, a.stl\n");
}

TEST_F(WatchTest, JsonIsALineAChange) {
    host.jobs = {Job(1, L"a.stl", JobStatus::Queued), Job(2, L"b.stl", JobStatus::Queued)};
    Script({[this] { host.Report(Status(2, JobStatus::Running, 40)); }});
    EXPECT_EQ(Run({L"watch", L"--json"}), 0);
    const std::size_t second = console.output.find('\n') + 1;
    EXPECT_NE(console.output.substr(0, second).find("\"number\":1"), std::string::npos);
    EXPECT_EQ(console.output.substr(second, 70),
              R"({"version":1,"jobs":[{"number":2,"id":"id2","status":"Running","progre)");
    EXPECT_EQ(console.output.find("\"number\":1", second), std::string::npos);
}

TEST_F(WatchTest, AHostThatGoesAwayEndsTheWatching) {
    host.jobs = {Job(1, L"a.stl", JobStatus::Running)};
    Script({[this] { host.transmitter.isEngineThere = false; }});
    EXPECT_EQ(Run({L"watch"}), 3);
    EXPECT_EQ(console.errors, "cadjobs: The host has gone. The list of jobs is kept.\n");
}

} // namespace
