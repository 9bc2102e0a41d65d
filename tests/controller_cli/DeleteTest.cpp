#include "FrontEndFixture.h"

namespace {

class DeleteTest : public FrontEndFixture {};

TEST_F(DeleteTest, SaysWhichJobsAreDeletedAndWhichAreNot) {
    host.jobs = {Job(1, L"a.stl", JobStatus::Success), Job(2, L"b.stl", JobStatus::Running)};
    host.answers[L"DeleteJobsRequest"] = {L"DeleteJobsResponse", LR"({"DeleteJobsResponse":["id1"]})"};
    EXPECT_EQ(Run({L"--delete", L"1,2"}), 1);
    EXPECT_EQ(console.output, "Job 1 is deleted.\n");
    EXPECT_EQ(console.errors, "Job 2 is not deleted: its state is Running. Cancel it first, or wait for its end.\n");
    EXPECT_EQ(host.Requests().back().payload, LR"({"DeleteJobsRequest":["id1","id2"]})");
}

TEST_F(DeleteTest, AllDeletedIsZero) {
    host.jobs = {Job(1, L"a.stl", JobStatus::Success)};
    host.answers[L"DeleteJobsRequest"] = {L"DeleteJobsResponse", LR"({"DeleteJobsResponse":["id1"]})"};
    EXPECT_EQ(Run({L"--delete", L"id1"}), 0);
}

} // namespace
