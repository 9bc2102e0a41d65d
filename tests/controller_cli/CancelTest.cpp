#include "FrontEndFixture.h"

#include "companion/Messages.h"

namespace {

class CancelTest : public FrontEndFixture {
protected:
    void AnswerWith(const std::wstring& request, const std::vector<JobStatusInfo>& cancelled) {
        host.answers[request] = {L"CancelJobsFinish", messages::Serialize(L"CancelJobsFinish", cancelled)};
    }
};

TEST_F(CancelTest, SaysWhatHasBecomeOfEachJob) {
    host.jobs = {Job(1, L"a.stl", JobStatus::Running), Job(2, L"b.stl", JobStatus::Queued),
                 Job(3, L"c.stl", JobStatus::Success)};
    AnswerWith(L"CancelJobs", {Status(1, JobStatus::Canceling), Status(2, JobStatus::Canceled)});
    EXPECT_EQ(Run({L"--cancel", L"2,1,3"}), 0);
    EXPECT_EQ(console.output, "Job 2: Canceled\n"
                              "Job 1: Canceling\n"
                              "Job 3: Success\n");
    EXPECT_EQ(host.Requests().back().payload, LR"({"CancelJobs":["id2","id1","id3"]})");
}

TEST_F(CancelTest, AnUnknownJobCancelsNothing) {
    host.jobs = {Job(1, L"a.stl", JobStatus::Running)};
    EXPECT_EQ(Run({L"--cancel", L"1,2"}), 2);
    EXPECT_EQ(host.Requests().size(), 1U);
}

TEST_F(CancelTest, CancelAllNamesTheJobsThatWereActive) {
    host.jobs = {Job(1, L"a.stl", JobStatus::Running), Job(2, L"b.stl", JobStatus::Success)};
    AnswerWith(L"CancelAllJobs", {Status(1, JobStatus::Canceling)});
    EXPECT_EQ(Run({L"--cancel-all"}), 0);
    EXPECT_EQ(console.output, "Job 1: Canceling\n");
}

TEST_F(CancelTest, CancelAllWithoutJobsSaysNothing) {
    AnswerWith(L"CancelAllJobs", {});
    EXPECT_EQ(Run({L"--cancel-all"}), 0);
    EXPECT_EQ(console.output, "");
}

} // namespace
