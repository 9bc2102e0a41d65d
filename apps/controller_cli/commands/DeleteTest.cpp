#include "kit/controller_cli/FrontEndFixture.h"

namespace {

class DeleteTest : public FrontEndFixture {
protected:
    /// The host deletes its first job.
    DeleteTest() {
        host.answers[L"DeleteJobsRequest"] = {L"DeleteJobsResponse", LR"({"DeleteJobsResponse":["id1"]})"};
        host.onRequest = [this](const std::wstring& request) {
            if (request == L"DeleteJobsRequest") {
                host.jobs.erase(host.jobs.begin());
            }
        };
    }
};

TEST_F(DeleteTest, SaysWhichJobsAreDeletedAndWhichAreNot) {
    host.jobs = {Job(1, L"a.stl", JobStatus::Success), Job(2, L"b.stl", JobStatus::Running)};
    EXPECT_EQ(Run({L"--delete", L"1,2"}), 1);
    EXPECT_EQ(console.output, "Job 1 is deleted.\n");
    EXPECT_EQ(console.errors, "Job 2 is not deleted: its state is Running. Cancel it first, or wait for its end.\n");
    EXPECT_EQ(host.Requests().at(1).payload, LR"({"DeleteJobsRequest":["id1","id2"]})");
}

TEST_F(DeleteTest, AllDeletedIsZero) {
    host.jobs = {Job(1, L"a.stl", JobStatus::Success)};
    EXPECT_EQ(Run({L"--delete", L"id1"}), 0);
    EXPECT_EQ(console.output, "Job 1 is deleted.\n");
}

TEST_F(DeleteTest, AJobThatSomebodyElseDeletesMeanwhileIsDeletedAsWell) {
    host.jobs = {Job(1, L"a.stl", JobStatus::Success)};
    host.answers[L"DeleteJobsRequest"] = {L"DeleteJobsResponse", LR"({"DeleteJobsResponse":[]})"};
    EXPECT_EQ(Run({L"--delete", L"1"}), 0);
    EXPECT_EQ(console.output, "Job 1 is deleted.\n");
    EXPECT_EQ(console.errors, "");
}

TEST_F(DeleteTest, AJobThatBeginsToRunMeanwhileIsToldAsRunning) {
    host.jobs = {Job(1, L"a.stl", JobStatus::Queued)};
    host.answers[L"DeleteJobsRequest"] = {L"DeleteJobsResponse", LR"({"DeleteJobsResponse":[]})"};
    host.onRequest = [this](const std::wstring& request) {
        if (request == L"DeleteJobsRequest") {
            host.jobs[0].status = JobStatus::Running;
        }
    };
    EXPECT_EQ(Run({L"--delete", L"1"}), 1);
    EXPECT_EQ(console.errors, "Job 1 is not deleted: its state is Running. Cancel it first, or wait for its end.\n");
}

} // namespace
