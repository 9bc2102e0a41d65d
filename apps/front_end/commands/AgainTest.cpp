#include "kit/front_end/CadjobsFixture.h"

#include "formats/Messages.h"

#include <algorithm>

namespace {

class AgainTest : public CadjobsFixture {
protected:
    static ListedJob Ended(std::int32_t number, JobStatus status, const std::wstring& argument = L"") {
        ListedJob job = Job(number, L"part" + std::to_wstring(number) + L".stl", status);
        job.scenario.id = L"mesh_report.rb";
        job.outputDir = L"\\out\\part";
        job.hasOwnOutputDir = true;
        job.runArgument = argument;
        return job;
    }

    /// Answers each request with as many jobs as it has input sets, except for rejected input.
    void AnswerWith(const JobEnqueueResult& result) {
        host.answers[L"EnqueueJobs"] = {L"EnqueueJobsFinish", messages::Serialize(L"EnqueueJobsFinish", result)};
    }

    std::vector<ScheduledRequest> Sent() {
        std::vector<ScheduledRequest> sent;
        for (const auto& request : host.Requests()) {
            if (request.name == L"EnqueueJobs") {
                EXPECT_TRUE(messages::Deserialize(request.payload, sent.emplace_back()));
            }
        }
        return sent;
    }
};

TEST_F(AgainTest, JobsOfOneKindNeedOneRequest) {
    host.jobs = {Ended(1, JobStatus::Failed), Ended(2, JobStatus::Success), Ended(3, JobStatus::Canceled)};
    AnswerWith({{{L"id4", 4}, {L"id5", 5}}, L"", {{}, {}}});
    EXPECT_EQ(Run({L"again", L"3,1"}), 0);
    EXPECT_EQ(console.output, "Job 4 is queued, like job 3.\nJob 5 is queued, like job 1.\n");
    ASSERT_EQ(Sent().size(), 1U);
    ScheduledRequest expected = RequestToRepeat(host.jobs[2]);
    expected.requestId = Sent().front().requestId;
    expected.inputFileSets.push_back(host.jobs[0].inputFiles);
    EXPECT_EQ(Sent().front(), expected);
    EXPECT_EQ(Sent().front().outputDir, L"\\out");
}

TEST_F(AgainTest, AllThatHaveFailedAreNamedByOneWord) {
    host.jobs = {Ended(1, JobStatus::Failed, L"coarse"), Ended(2, JobStatus::Success), Ended(3, JobStatus::Failed)};
    AnswerWith({{{L"id4", 4}}, L"", {{}}});
    EXPECT_EQ(Run({L"again", L"failed"}), 0);
    ASSERT_EQ(Sent().size(), 2U);
    EXPECT_EQ(Sent()[0].runArgument, L"coarse");
    EXPECT_EQ(Sent()[1].inputFileSets.front(), host.jobs[2].inputFiles);
}

TEST_F(AgainTest, NothingHasFailed) {
    host.jobs = {Ended(2, JobStatus::Success)};
    EXPECT_EQ(Run({L"again", L"failed"}), 0);
    EXPECT_TRUE(Sent().empty());
}

TEST_F(AgainTest, AJobThatHasNotEndedIsNotRunTwice) {
    host.jobs = {Ended(1, JobStatus::Running), Ended(2, JobStatus::Failed)};
    AnswerWith({{{L"id3", 3}}, L"", {{}}});
    EXPECT_EQ(Run({L"again", L"1,2"}), 1);
    EXPECT_NE(console.errors.find("Job 1 has not ended and is not run again."), std::string::npos) << console.errors;
    EXPECT_EQ(console.output, "Job 3 is queued, like job 2.\n");
}

TEST_F(AgainTest, ARefusalIsToldWithItsReason) {
    host.jobs = {Ended(1, JobStatus::Failed)};
    AnswerWith({{{}}, L"", {{L"The scenario is gone."}}});
    EXPECT_EQ(Run({L"again", L"1"}), 1);
    EXPECT_NE(console.errors.find("The scenario is gone."), std::string::npos) << console.errors;
    EXPECT_NE(console.errors.find("Job 1 is not run again."), std::string::npos) << console.errors;
}

TEST_F(AgainTest, AnUnknownJobIsAnError) {
    EXPECT_EQ(Run({L"again", L"8"}), 2);
    EXPECT_TRUE(Sent().empty());
}

} // namespace
