#include "kit/front_end/CadjobsFixture.h"

#include "formats/Messages.h"

namespace {

class EditTest : public CadjobsFixture {
protected:
    EditTest() {
        host.jobs = {Job(1, L"a.stl", JobStatus::Queued), Job(2, L"b.stl", JobStatus::Running),
                     Job(3, L"c.stl", JobStatus::Queued)};
    }

    void AnswerWith(const std::vector<JobStatusInfo>& edited) {
        host.answers[L"EditJobsRequest"] = {L"EditJobsFinish", messages::Serialize(L"EditJobsFinish", edited)};
    }

    JobsEdit Sent() {
        JobsEdit edit;
        EXPECT_TRUE(messages::Deserialize(host.Requests().back().payload, edit));
        return edit;
    }
};

TEST_F(EditTest, OnlyWhatIsGivenIsChanged) {
    AnswerWith({Status(3, JobStatus::Queued), Status(1, JobStatus::Queued)});
    EXPECT_EQ(Run({L"edit", L"3,1", L"--priority", L"-7"}), 0);
    EXPECT_EQ(console.output, "Job 3 is changed.\nJob 1 is changed.\n");
    JobsEdit expected;
    expected.jobs = {L"id3", L"id1"};
    expected.priority = -7;
    EXPECT_EQ(Sent(), expected);
}

TEST_F(EditTest, ATimeMayBeGivenFromNowOn) {
    AnswerWith({Status(1, JobStatus::Queued)});
    EXPECT_EQ(Run({L"edit", L"1", L"--not-before", L"2h", L"--need", L"cad=2"}), 0);
    JobsEdit expected;
    expected.jobs = {L"id1"};
    expected.notBefore = std::int64_t{1772694600 + 7200};
    expected.needs = {{L"cad", 2}};
    EXPECT_EQ(Sent(), expected);
}

TEST_F(EditTest, AJobThatNoLongerWaitsIsToldAndFailsTheCommand) {
    AnswerWith({Status(1, JobStatus::Queued)});
    EXPECT_EQ(Run({L"hold", L"1,2"}), 1);
    EXPECT_EQ(console.output, "Job 1 is on hold.\n");
    EXPECT_NE(console.errors.find("Job 2 does not wait any longer and was not changed."), std::string::npos)
        << console.errors;
    EXPECT_EQ(Sent().hold, true);
}

TEST_F(EditTest, ReleaseIsTheOppositeOfHold) {
    AnswerWith({Status(1, JobStatus::Queued)});
    EXPECT_EQ(Run({L"release", L"1"}), 0);
    EXPECT_EQ(console.output, "Job 1 is released.\n");
    EXPECT_EQ(Sent().hold, false);
}

TEST_F(EditTest, AWrongValueChangesNothing) {
    for (const std::vector<std::wstring>& wrong : {std::vector<std::wstring>{L"--priority", L"1001"},
                                                   {L"--priority", L"high"},
                                                   {L"--not-before", L"tomorrow"},
                                                   {L"--need", L"cad"},
                                                   {L"--need", L"cad=0"},
                                                   {L"--need", L"=1"},
                                                   {L"--need", L"a=1", L"--need", L"a=2"}}) {
        std::vector<std::wstring> arguments = {L"edit", L"1"};
        arguments.insert(arguments.end(), wrong.begin(), wrong.end());
        EXPECT_EQ(Run(arguments), 2) << std::string(wrong[1].begin(), wrong[1].end());
    }
    EXPECT_EQ(Run({L"edit", L"1"}), 2);
    EXPECT_TRUE(host.Requests().empty());
}

TEST_F(EditTest, PauseAndResumeSetTheStateOfTheQueue) {
    for (const auto& [option, payload] : {std::pair(L"pause", LR"({"SetQueueStateRequest":{"paused":true}})"),
                                          std::pair(L"resume", LR"({"SetQueueStateRequest":{"paused":false}})")}) {
        host.answers[L"SetQueueStateRequest"] = {L"QueueStateResponse", L"{\"QueueStateResponse\":{\"paused\":true}}"};
        EXPECT_EQ(Run({option}), 0);
        EXPECT_EQ(host.Requests().back().payload, payload);
    }
    EXPECT_EQ(console.output, "The queue is paused: running jobs go on, no further one starts. Go on with: "
                              "cadjobs resume\nThe queue goes on.\n");
}

TEST_F(EditTest, ARunSendsWhatIsDecidedAboutItsStart) {
    WriteTextFile(directory / L"a.stl", "solid");
    host.answers[L"EnqueueJobs"] = {L"EnqueueJobsFinish",
                                    messages::Serialize(L"EnqueueJobsFinish", JobEnqueueResult{{{}}, L"", {{L"no"}}})};
    EXPECT_EQ(
        Run({L"run", L"r.rb", directory / L"a.stl", L"--priority", L"3", L"--after", L"1", L"--on-hold", L"--reuse"}),
        1);
    ScheduledRequest sent;
    ASSERT_TRUE(messages::Deserialize(host.Requests().at(0).payload, sent));
    Scheduling expected;
    expected.priority = 3;
    expected.after = {L"1"};
    expected.hold = true;
    expected.reuse = true;
    EXPECT_EQ(static_cast<const Scheduling&>(sent), expected);
}

TEST_F(EditTest, ARunSendsItsLimitsAndRetries) {
    WriteTextFile(directory / L"a.stl", "solid");
    host.answers[L"EnqueueJobs"] = {L"EnqueueJobsFinish",
                                    messages::Serialize(L"EnqueueJobsFinish", JobEnqueueResult{{{}}, L"", {{L"no"}}})};
    const std::wstring input = directory / L"a.stl";
    EXPECT_EQ(Run({L"run", L"r.rb", input, L"--retries", L"2", L"--retry-delay", L"30s", L"--time-limit", L"2h",
                   L"--memory-limit", L"0"}),
              1);
    ScheduledRequest sent;
    ASSERT_TRUE(messages::Deserialize(host.Requests().at(0).payload, sent));
    EXPECT_EQ(sent.retries, 2);
    EXPECT_EQ(sent.retryDelay, 30);
    EXPECT_EQ(sent.timeLimit, 7200);
    EXPECT_EQ(sent.silenceLimit, std::nullopt);
    EXPECT_EQ(sent.retryBackoff, std::nullopt);
    EXPECT_EQ(sent.memoryLimitMiB, 0);
    EXPECT_EQ(Run({L"run", L"r.rb", input, L"--retries", L"101"}), 2);
    EXPECT_EQ(Run({L"run", L"r.rb", input, L"--silence-limit", L"5"}), 2);
    EXPECT_EQ(Run({L"run", L"r.rb", input, L"--memory-limit", L"4G"}), 2);
    EXPECT_EQ(Run({L"run", L"r.rb", input, L"--cpu-limit", L"-1"}), 2);
}

TEST_F(EditTest, TheListSaysWhyJobsThatFailedRunAgain) {
    host.jobs[0].retries = 2;
    host.jobs[0].attempt = 1;
    host.jobs[0].lastEnding = L"no licence";
    EXPECT_EQ(Run({L"list"}), 0);
    EXPECT_NE(console.output.find("attempt 2 of 3; before: no licence\n"), std::string::npos) << console.output;
}

TEST_F(EditTest, TheListSaysWhyJobsWaitAndThatTheQueueIsPaused) {
    host.queueState.isPaused = true;
    host.jobs[0].waitReason = L"resource";
    host.jobs[0].waitName = L"cad";
    host.jobs[2].waitReason = L"time";
    host.jobs[2].notBefore = 1;
    EXPECT_EQ(Run({L"list"}), 0);
    EXPECT_EQ(console.output.rfind("The queue is paused", 0), 0U) << console.output;
    EXPECT_NE(console.output.find("waits for cad\n"), std::string::npos) << console.output;
    EXPECT_NE(console.output.find("not before 1970-01-01 00:00:01 UTC\n"), std::string::npos) << console.output;
}

} // namespace
