#include "FrontEndFixture.h"

namespace {

class LogTest : public FrontEndFixture {
protected:
    LogTest() {
        host.jobs = {Job(1, L"a.stl", JobStatus::Running)};
        host.jobs[0].workDir = folder / L"work";
    }

    void Log(const std::string& text) { WriteTextFile(folder / L"work\\scenario.log", text); }

    JobStatusInfo At(JobStatus status) {
        JobStatusInfo info = Status(1, status);
        info.workDir = folder / L"work";
        return info;
    }
};

TEST_F(LogTest, PrintsTheLogAsItIs) {
    Log("one\ntwo\xff\n");
    EXPECT_EQ(Run({L"--log", L"1"}), 0);
    EXPECT_EQ(console.output, "one\ntwo\xff\n");
}

TEST_F(LogTest, AJobWithoutALogIsSaidSo) {
    EXPECT_EQ(Run({L"--log", L"1"}), 1);
    EXPECT_EQ(console.errors, "controller_cli: Job 1 has no log.\n");
    host.jobs[0].workDir.clear();
    EXPECT_EQ(Run({L"--log", L"1"}), 1);
}

TEST_F(LogTest, FollowsUntilTheJobHasEnded) {
    Log("one\n");
    Script({[this] {
                Log("one\ntwo\n");
                host.Report(At(JobStatus::Running));
            },
            [this] {
                Log("one\ntwo\nthree\n");
                host.Report(At(JobStatus::Success));
            }});
    EXPECT_EQ(Run({L"--log", L"1", L"--follow"}), 0);
    EXPECT_EQ(console.output, "one\ntwo\nthree\n");
}

TEST_F(LogTest, ALogThatWasCutIsPrintedAnew) {
    Log("a long beginning\n");
    Script({[this] {
        Log("[cut]\nend\n");
        host.Report(At(JobStatus::Success));
    }});
    EXPECT_EQ(Run({L"--log", L"1", L"--follow"}), 0);
    EXPECT_EQ(console.output, "a long beginning\n[cut]\nend\n");
}

TEST_F(LogTest, FollowingAJobThatHasEndedPrintsItsLog) {
    Log("one\n");
    host.jobs[0].status = JobStatus::Failed;
    EXPECT_EQ(Run({L"--log", L"id1", L"--follow"}), 0);
    EXPECT_EQ(console.output, "one\n");
}

TEST_F(LogTest, AJobThatEndsBeforeItRanHasNoLogToFollow) {
    host.jobs[0].status = JobStatus::Dequeued;
    host.jobs[0].workDir.clear();
    EXPECT_EQ(Run({L"--log", L"1", L"--follow"}), 1);
    EXPECT_EQ(console.errors, "controller_cli: Job 1 has no log.\n");
}

TEST_F(LogTest, CtrlCEndsTheFollowing) {
    Log("one\n");
    Script({});
    EXPECT_EQ(Run({L"--log", L"1", L"--follow"}), 130);
}

} // namespace
