#include "FrontEndFixture.h"

namespace {

class WatchTest : public FrontEndFixture {
protected:
    void OnTerminal(std::size_t width, std::size_t height) {
        console.isTerminal = true;
        console.width = width;
        console.height = height;
    }
};

TEST_F(WatchTest, WithoutATerminalEachChangeIsALine) {
    host.jobs = {Job(1, L"a.stl", JobStatus::Success), Job(2, L"b.stl", JobStatus::Queued)};
    Script({[this] { host.Report(Status(2, JobStatus::Running, 40)); },
            [this] { host.Report(Status(2, JobStatus::Failed, 40)); }});
    EXPECT_EQ(Run({L"--watch"}), 0);
    EXPECT_EQ(console.output, "Job 2 Queued, 0 %, Mesh report, b.stl\n"
                              "Job 2 Running, 40 %, Mesh report, b.stl\n"
                              "Job 2 Failed, 40 %, Mesh report, b.stl\n");
}

TEST_F(WatchTest, OnATerminalATableIsDrawnOver) {
    OnTerminal(100, 24);
    host.jobs = {Job(1, L"a.stl", JobStatus::Success), Job(2, L"b.stl", JobStatus::Queued)};
    Script({[this] { host.Report(Status(2, JobStatus::Running, 45)); }});
    EXPECT_EQ(Run({L"--watch"}), 0);
    EXPECT_EQ(
        console.output,
        "Job  State                       Progress  Time  Scenario     Input  Output folder, or what the sc…\x1b[K\n"
        "  2  Queued  [....................]   0 %        Mesh report  b.stl\x1b[K\n"
        "Queued: 1, running: 0, ended: 1\x1b[K\n"
        "\x1b[J"
        "\x1b[3A"
        "Job  State                        Progress  Time  Scenario     Input  Output folder, or what the s…\x1b[K\n"
        "  2  Running  [#########...........]  45 %        Mesh report  b.stl\x1b[K\n"
        "Queued: 0, running: 1, ended: 1\x1b[K\n"
        "\x1b[J");
}

TEST_F(WatchTest, ALowTerminalShowsWhatRunsFirst) {
    OnTerminal(60, 5);
    host.jobs = {Job(1, L"a.stl", JobStatus::Queued), Job(2, L"b.stl", JobStatus::Running),
                 Job(3, L"c.stl", JobStatus::Queued), Job(4, L"d.stl", JobStatus::Canceling)};
    Script({});
    EXPECT_EQ(Run({L"--watch"}), 0);
    EXPECT_EQ(console.output.find("a.stl"), std::string::npos);
    EXPECT_NE(console.output.find("  2  Running"), std::string::npos);
    EXPECT_NE(console.output.find("  4  Canceling"), std::string::npos);
    EXPECT_NE(console.output.find("Queued: 2, running: 2, ended: 0"), std::string::npos);
}

TEST_F(WatchTest, NoLineReachesTheLastColumn) {
    OnTerminal(40, 24);
    host.jobs = {Job(1, L"a-very-long-name-of-an-input-file.stl", JobStatus::Running)};
    Script({});
    EXPECT_EQ(Run({L"--watch"}), 0);
    EXPECT_EQ(console.output, "Job  State                     Progress\x1b[K\n"
                              "  1  Running  [....................]  …\x1b[K\n"
                              "Queued: 0, running: 1, ended: 0\x1b[K\n"
                              "\x1b[J");
}

TEST_F(WatchTest, AJobThatComesLaterIsShown) {
    Script({[this] {
        host.jobs = {Job(7, L"new.stl", JobStatus::Running)};
        host.Report(Status(7, JobStatus::Running, 10));
    }});
    EXPECT_EQ(Run({L"--watch"}), 0);
    EXPECT_EQ(console.output, "Job 7 Running, 10 %, Mesh report, new.stl\n");
}

TEST_F(WatchTest, ADeletedJobIsSaidSo) {
    host.jobs = {Job(1, L"a.stl", JobStatus::Success)};
    Script({[this] { host.Report(Status(1, static_cast<JobStatus>(-1))); }});
    EXPECT_EQ(Run({L"--watch"}), 0);
    EXPECT_EQ(console.output, "Job 1 Deleted, 0 %, Mesh report, a.stl\n");
}

TEST_F(WatchTest, JsonIsALineAChange) {
    host.jobs = {Job(1, L"a.stl", JobStatus::Queued), Job(2, L"b.stl", JobStatus::Queued)};
    Script({[this] { host.Report(Status(2, JobStatus::Running, 40)); }});
    EXPECT_EQ(Run({L"--watch", L"--json"}), 0);
    const std::size_t second = console.output.find('\n') + 1;
    EXPECT_NE(console.output.substr(0, second).find("\"number\":1"), std::string::npos);
    EXPECT_EQ(console.output.substr(second, 70),
              R"({"version":1,"jobs":[{"number":2,"id":"id2","status":"Running","progre)");
    EXPECT_EQ(console.output.find("\"number\":1", second), std::string::npos);
}

TEST_F(WatchTest, AHostThatGoesAwayEndsTheWatching) {
    host.jobs = {Job(1, L"a.stl", JobStatus::Running)};
    Script({[this] { host.transmitter.isEngineThere = false; }});
    EXPECT_EQ(Run({L"--watch"}), 3);
    EXPECT_EQ(console.errors, "controller_cli: The host has gone. The list of jobs is kept.\n");
}

} // namespace
