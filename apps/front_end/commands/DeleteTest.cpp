#include "kit/front_end/CadjobsFixture.h"

#include "ControllerCSWrapper/ControllerCSWrapper.h"

namespace {

class DeleteTest : public CadjobsFixture {
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
    EXPECT_EQ(Run({L"delete", L"1,2"}), 1);
    EXPECT_EQ(console.output, "Job 1 is deleted.\n");
    EXPECT_EQ(console.errors,
              "cadjobs: Job 2 is not deleted: its state is Running. Cancel it first, or wait for its end.\n");
    EXPECT_EQ(host.Requests().at(1).payload, LR"({"DeleteJobsRequest":["id1","id2"]})");
}

TEST_F(DeleteTest, AllDeletedIsZero) {
    host.jobs = {Job(1, L"a.stl", JobStatus::Success)};
    EXPECT_EQ(Run({L"delete", L"id1"}), 0);
    EXPECT_EQ(console.output, "Job 1 is deleted.\n");
}

TEST_F(DeleteTest, AJobThatSomebodyElseDeletesMeanwhileIsDeletedAsWell) {
    host.jobs = {Job(1, L"a.stl", JobStatus::Success)};
    host.answers[L"DeleteJobsRequest"] = {L"DeleteJobsResponse", LR"({"DeleteJobsResponse":[]})"};
    EXPECT_EQ(Run({L"delete", L"1"}), 0);
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
    EXPECT_EQ(Run({L"delete", L"1"}), 1);
    EXPECT_EQ(console.errors,
              "cadjobs: Job 1 is not deleted: its state is Running. Cancel it first, or wait for its end.\n");
}

/// The clock of the tests shows 2026-03-05T07:10:00Z.
class CleanTest : public DeleteTest {
protected:
    CleanTest() {
        host.jobs = {Ended(1, JobStatus::Success, L"2026-02-20T00:00:00Z"),
                     Ended(2, JobStatus::Failed, L"2026-02-20T00:00:00Z"),
                     Ended(3, JobStatus::Failed, L"2026-03-05T07:00:00Z"),
                     Job(4, L"d.stl", JobStatus::Running),
                     Job(5, L"e.stl", JobStatus::Queued),
                     Job(6, L"f.stl", JobStatus::Dequeued)};
        host.jobs.back().queuedTime = 1767225600; // 2026-01-01
    }

    static ListedJob Ended(std::int32_t number, JobStatus status, const std::wstring& endTime) {
        ListedJob job = Job(number, L"part.stl", status);
        job.endTime = endTime;
        return job;
    }

    /// The ids that the host was asked to delete.
    std::vector<std::wstring> Asked() {
        std::vector<std::wstring> ids;
        for (const auto& request : host.Requests()) {
            if (request.name == L"DeleteJobsRequest") {
                EXPECT_TRUE(ControllerCSWrapper::Deserialize(request.payload, ids));
            }
        }
        return ids;
    }
};

TEST_F(CleanTest, AgeAndStateDecide) {
    Run({L"clean", L"--older-than", L"7d", L"--state", L"Failed"});
    EXPECT_EQ(Asked(), std::vector<std::wstring>{L"id2"});
}

TEST_F(CleanTest, OnlyEndedJobsAreDeletedHoweverOldTheyAre) {
    Run({L"clean", L"--older-than", L"7d"});
    EXPECT_EQ(Asked(), (std::vector<std::wstring>{L"id1", L"id2", L"id6"}));
}

TEST_F(CleanTest, TheAgeOfAJobWithoutAnyTimeIsNotKnown) {
    host.jobs.back().queuedTime = 0;
    Run({L"clean", L"--older-than", L"1s"});
    EXPECT_EQ(Asked(), (std::vector<std::wstring>{L"id1", L"id2", L"id3"}));
}

TEST_F(CleanTest, ADryRunShowsTheJobsAndDeletesNothing) {
    EXPECT_EQ(Run({L"clean", L"--state", L"Failed,Dequeued", L"--dry-run"}), 0);
    EXPECT_TRUE(Asked().empty());
    for (const char* const line : {"\n  2  Failed", "\n  3  Failed", "\n  6  Dequeued"}) {
        EXPECT_NE(console.output.find(line), std::string::npos) << console.output;
    }
    EXPECT_EQ(console.output.find("\n  1  "), std::string::npos) << console.output;
}

TEST_F(CleanTest, NothingToDeleteIsNoError) {
    EXPECT_EQ(Run({L"clean", L"--state", L"Canceled"}), 0);
    EXPECT_TRUE(Asked().empty());
    EXPECT_EQ(console.output, "There are no jobs.\n");
}

TEST_F(CleanTest, WithoutAChoiceNothingIsDeleted) {
    EXPECT_EQ(Run({L"clean"}), 2);
    EXPECT_EQ(Run({L"clean", L"--dry-run"}), 2);
    EXPECT_EQ(Run({L"clean", L"--state", L"Running"}), 2);
    EXPECT_EQ(Run({L"clean", L"--older-than", L"tomorrow"}), 2);
    EXPECT_TRUE(host.Requests().empty());
}

} // namespace
