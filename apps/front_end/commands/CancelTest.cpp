#include "kit/front_end/CadjobsFixture.h"

#include "formats/Messages.h"

namespace {

class CancelTest : public CadjobsFixture {
protected:
    void AnswerWith(const std::wstring& request, const std::vector<JobStatusInfo>& cancelled) {
        host.answers[request] = {L"CancelJobsFinish", messages::Serialize(L"CancelJobsFinish", cancelled)};
    }

    /// Sets the jobs after the request has arrived.
    void MakeOfJobs(const std::wstring& request, const std::vector<ListedJob>& jobs) {
        host.onRequest = [this, request, jobs](const std::wstring& name) {
            if (name == request) {
                host.jobs = jobs;
            }
        };
    }
};

TEST_F(CancelTest, SaysWhatHasBecomeOfEachJob) {
    host.jobs = {Job(1, L"a.stl", JobStatus::Running), Job(2, L"b.stl", JobStatus::Queued),
                 Job(3, L"c.stl", JobStatus::Success)};
    AnswerWith(L"CancelJobs", {Status(1, JobStatus::Canceling), Status(2, JobStatus::Canceled)});
    EXPECT_EQ(Run({L"cancel", L"2,1,3"}), 0);
    EXPECT_EQ(console.output, "Job 2: Canceled\n"
                              "Job 1: Canceling\n"
                              "Job 3: Success\n");
    EXPECT_EQ(host.Requests().back().payload, LR"({"CancelJobs":["id2","id1","id3"]})");
}

TEST_F(CancelTest, AnUnknownJobCancelsNothing) {
    host.jobs = {Job(1, L"a.stl", JobStatus::Running)};
    EXPECT_EQ(Run({L"cancel", L"1,2"}), 2);
    EXPECT_EQ(host.Requests().size(), 1U);
}

TEST_F(CancelTest, CancelAllNamesTheJobsThatWereActive) {
    host.jobs = {Job(1, L"a.stl", JobStatus::Running), Job(2, L"b.stl", JobStatus::Success)};
    AnswerWith(L"CancelAllJobs", {Status(1, JobStatus::Canceling)});
    EXPECT_EQ(Run({L"cancel", L"--all"}), 0);
    EXPECT_EQ(console.output, "Job 1: Canceling\n");
}

TEST_F(CancelTest, WhatSomebodyElseHasCancelledIsToldAsItIs) {
    host.jobs = {Job(1, L"a.stl", JobStatus::Running), Job(2, L"b.stl", JobStatus::Queued),
                 Job(3, L"c.stl", JobStatus::Queued)};
    MakeOfJobs(L"CancelAllJobs", {Job(1, L"a.stl", JobStatus::Canceling), Job(2, L"b.stl", JobStatus::Dequeued)});
    AnswerWith(L"CancelAllJobs", {});
    EXPECT_EQ(Run({L"cancel", L"--all"}), 0);
    EXPECT_EQ(console.output, "Job 1: Canceling\nJob 2: Dequeued\nJob 3: Deleted\n");
}

TEST_F(CancelTest, AJobThatEndsBeforeItCanBeCancelledIsToldAsItEnded) {
    host.jobs = {Job(1, L"a.stl", JobStatus::Running)};
    MakeOfJobs(L"CancelJobs", {Job(1, L"a.stl", JobStatus::Failed)});
    AnswerWith(L"CancelJobs", {});
    EXPECT_EQ(Run({L"cancel", L"1"}), 0);
    EXPECT_EQ(console.output, "Job 1: Failed\n");
}

TEST_F(CancelTest, CancelAllNamesAJobThatCameMeanwhile) {
    host.jobs = {Job(1, L"a.stl", JobStatus::Queued)};
    MakeOfJobs(L"CancelAllJobs", {Job(1, L"a.stl", JobStatus::Dequeued), Job(2, L"b.stl", JobStatus::Dequeued),
                                  Job(3, L"c.stl", JobStatus::Queued)});
    AnswerWith(L"CancelAllJobs", {Status(1, JobStatus::Dequeued), Status(2, JobStatus::Dequeued)});
    EXPECT_EQ(Run({L"cancel", L"--all"}), 0);
    EXPECT_EQ(console.output, "Job 1: Dequeued\nJob 2: Dequeued\n");
}

TEST_F(CancelTest, CancelAllWithoutJobsSaysNothing) {
    AnswerWith(L"CancelAllJobs", {});
    EXPECT_EQ(Run({L"cancel", L"--all"}), 0);
    EXPECT_EQ(console.output, "");
}

} // namespace
