#include "kit/front_end/CadjobsFixture.h"

namespace {

class LogTest : public CadjobsFixture {
protected:
    LogTest() {
        host.jobs = {Job(1, L"a.stl", JobStatus::Running)};
        host.jobs[0].workDir = directory / L"work";
    }

    void Log(const std::string& text) { WriteTextFile(directory / L"work\\scenario.log", text); }

    JobStatusInfo At(JobStatus status) {
        JobStatusInfo info = Status(1, status);
        info.workDir = directory / L"work";
        return info;
    }
};

TEST_F(LogTest, PrintsTheLogAsItIs) {
    Log("one\ntwo\xff\n");
    EXPECT_EQ(Run({L"log", L"1"}), 0);
    EXPECT_EQ(console.output, "one\ntwo\xff\n");
}

TEST_F(LogTest, OnATerminalNothingInTheLogSteersIt) {
    console.isTerminal = true;
    Log("one\ttwo\r\n\x1b]0;title\x07\x1b[31mred\xc2\x9b"
        "2J\xe2\x80\xae"
        "end \xc3\xa9\xff\n");
    EXPECT_EQ(Run({L"log", L"1"}), 0);
    EXPECT_EQ(console.output,
              "one\ttwo\n\\u001b]0;title\\u0007\\u001b[31mred\\u009b2J\\u202eend \xc3\xa9\xef\xbf\xbd\n");
}

TEST_F(LogTest, OnATerminalACharacterMayComeInPieces) {
    console.isTerminal = true;
    Log("one \xe2\x80");
    Script({[this] {
        Log("one \xe2\x80\xae two\n");
        host.Report(At(JobStatus::Success));
    }});
    EXPECT_EQ(Run({L"log", L"1", L"--follow"}), 0);
    EXPECT_EQ(console.output, "one \\u202e two\n");
}

TEST_F(LogTest, AsJsonACharacterMayComeInPieces) {
    Log("one \xe2\x82");
    Script({[this] {
        Log("one \xe2\x82\xac two\n");
        host.Report(At(JobStatus::Success));
    }});
    EXPECT_EQ(Run({L"log", L"1", L"--follow", L"--json"}), 0);
    EXPECT_EQ(console.output, R"({"version":1,"number":1,"text":"one "})"
                              "\n"
                              "{\"version\":1,\"number\":1,\"text\":\"\xe2\x82\xac two\\n\"}"
                              "\n");
}

TEST_F(LogTest, AsJsonALongLogIsDividedBetweenCharacters) {
    constexpr std::size_t block = 256 * 1024;
    Log(std::string(block - 1, 'a') + "\xc3\xa9" + std::string(block - 3, 'b') + "\xf0\x9f\x98\x80");
    EXPECT_EQ(Run({L"log", L"1", L"--json"}), 0);
    EXPECT_NE(console.output.find("\"text\":\"\xc3\xa9"
                                  "b"),
              std::string::npos);
    EXPECT_NE(console.output.find("\"text\":\"\xf0\x9f\x98\x80\""), std::string::npos);
}

TEST_F(LogTest, AsJsonBytesThatAreNoTextAreReplaced) {
    Log("a\xff"
        "b \xed\xa0\x80 c\xe2\x82");
    EXPECT_EQ(Run({L"log", L"1", L"--json"}), 0);
    EXPECT_EQ(console.output, "{\"version\":1,\"number\":1,\"text\":\"a\xef\xbf\xbd"
                              "b \xef\xbf\xbd c\"}\n"
                              "{\"version\":1,\"number\":1,\"text\":\"\xef\xbf\xbd\"}\n");
}

TEST_F(LogTest, AJobWithoutALogIsSaidSo) {
    EXPECT_EQ(Run({L"log", L"1"}), 1);
    EXPECT_EQ(console.errors, "cadjobs: Job 1 has no log.\n");
    host.jobs[0].workDir.clear();
    EXPECT_EQ(Run({L"log", L"1"}), 1);
}

TEST_F(LogTest, AnEarlierAttemptHasALogOfItsOwn) {
    Log("the last attempt\n");
    WriteTextFile(directory / L"work\\scenario.2.log", "the second attempt\n");
    EXPECT_EQ(Run({L"log", L"1", L"--attempt", L"2"}), 0);
    EXPECT_EQ(console.output, "the second attempt\n");
    EXPECT_EQ(Run({L"log", L"1", L"--attempt", L"1"}), 1);
    EXPECT_EQ(console.errors, "cadjobs: Job 1 has no log of an earlier attempt 1.\n");
    host.jobs[0].workDir.clear();
    EXPECT_EQ(Run({L"log", L"1", L"--attempt", L"2"}), 1);
}

TEST_F(LogTest, AsJsonAnEarlierAttemptIsOneText) {
    WriteTextFile(directory / L"work\\scenario.1.log", "one\n");
    EXPECT_EQ(Run({L"log", L"1", L"--attempt", L"1", L"--json"}), 0);
    EXPECT_EQ(console.output, "{\"version\":1,\"number\":1,\"text\":\"one\\n\"}\n");
}

TEST_F(LogTest, AnAttemptIsANumberAndIsNotFollowed) {
    WriteTextFile(directory / L"work\\scenario.1.log", "one\n");
    for (const wchar_t* const attempt : {L"0", L"-1", L"1x", L"..\\scenario", L"99999999999"}) {
        EXPECT_EQ(Run({L"log", L"1", L"--attempt", attempt}), 2) << attempt;
    }
    EXPECT_EQ(Run({L"log", L"1", L"--attempt", L"1", L"--follow"}), 2);
    EXPECT_EQ(console.output, "");
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
    EXPECT_EQ(Run({L"log", L"1", L"--follow"}), 0);
    EXPECT_EQ(console.output, "one\ntwo\nthree\n");
}

TEST_F(LogTest, ALogThatWasCutIsPrintedAnew) {
    Log("a long beginning\n");
    Script({[this] {
        Log("[cut]\nend\n");
        host.Report(At(JobStatus::Success));
    }});
    EXPECT_EQ(Run({L"log", L"1", L"--follow"}), 0);
    EXPECT_EQ(console.output, "a long beginning\n[cut]\nend\n");
}

TEST_F(LogTest, FollowingAJobThatHasEndedPrintsItsLog) {
    Log("one\n");
    host.jobs[0].status = JobStatus::Failed;
    EXPECT_EQ(Run({L"log", L"id1", L"--follow"}), 0);
    EXPECT_EQ(console.output, "one\n");
}

TEST_F(LogTest, AJobThatEndsBeforeItRanHasNoLogToFollow) {
    host.jobs[0].status = JobStatus::Dequeued;
    host.jobs[0].workDir.clear();
    EXPECT_EQ(Run({L"log", L"1", L"--follow"}), 1);
    EXPECT_EQ(console.errors, "cadjobs: Job 1 has no log.\n");
}

TEST_F(LogTest, AWaitingJobThatIsDeletedIsSaidSo) {
    host.jobs[0].status = JobStatus::Queued;
    host.onAnswered = [this](const std::wstring&) { host.Report(Status(1, static_cast<JobStatus>(-1))); };
    EXPECT_EQ(Run({L"log", L"1", L"--follow"}), 1);
    EXPECT_EQ(console.errors, "cadjobs: Job 1 was deleted; there is no log.\n");
}

TEST_F(LogTest, AWaitingJobThatIsDequeuedHasNoLog) {
    host.jobs[0].status = JobStatus::Queued;
    host.onAnswered = [this](const std::wstring&) { host.Report(At(JobStatus::Dequeued)); };
    EXPECT_EQ(Run({L"log", L"1", L"--follow"}), 1);
    EXPECT_EQ(console.errors, "cadjobs: Job 1 has no log.\n");
}

TEST_F(LogTest, AJobThatIsDeletedAfterItsEndHasShownItsLog) {
    Log("one\n");
    Script({[this] {
        host.Report(At(JobStatus::Success));
        host.Report(Status(1, static_cast<JobStatus>(-1)));
    }});
    EXPECT_EQ(Run({L"log", L"1", L"--follow"}), 0);
    EXPECT_EQ(console.output, "one\n");
}

TEST_F(LogTest, CtrlCEndsTheFollowing) {
    Log("one\n");
    Script({});
    EXPECT_EQ(Run({L"log", L"1", L"--follow"}), 130);
}

} // namespace
