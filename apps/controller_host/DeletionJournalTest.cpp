#include "controller_host/DeletionJournal.h"

#include "kit/controller_host/HostFixture.h"
#include "platform/files/Directory.h"
#include "platform/files/FileSystem.h"
#include "platform/files/RemoveTree.h"

namespace {

/// The loop does not run: enqueued jobs wait, and a written list does not change.
class DeletionJournalTest : public HostFixture {
protected:
    std::vector<JobListInfo> Jobs() {
        std::vector<JobListInfo> jobs;
        engine->GetJobList(jobs);
        return jobs;
    }

    /// Enqueues jobs and creates their work directories.
    void EnqueueWithDirectories(std::size_t count) {
        answers->Answer({7, L"EnqueueJobs", EnqueueRequest(count)});
        for (const JobListInfo& job : Jobs()) {
            WriteTextFile(job.workDir + L"\\scenario.log", "some words");
        }
    }

    std::vector<std::wstring> Delete(std::vector<std::wstring> ids) {
        std::vector<std::wstring> deleted;
        engine->DeleteJobsDurably(ids, deleted);
        return deleted;
    }

    bool IsNoted() const { return platform::Exists(directory / L"job_list.json.deletions"); }

    DeletionJournal notes{directory / L"job_list.json"};
};

TEST_F(DeletionJournalTest, ADeletionLeavesNoNote) {
    EnqueueWithDirectories(2);
    const std::wstring workDir = Jobs().front().workDir;
    EXPECT_EQ(Delete({L"1"}), std::vector<std::wstring>{L"1"});
    EXPECT_FALSE(platform::Exists(workDir));
    EXPECT_FALSE(IsNoted());
}

TEST_F(DeletionJournalTest, AnInterruptedDeletionIsFinishedAndOtherJobsStay) {
    EnqueueWithDirectories(3);
    const std::vector<JobListInfo> jobs = Jobs();
    notes.Add({jobs[0], jobs[1]});
    ASSERT_TRUE(platform::RemoveTree(jobs[0].workDir)); // as far as the earlier host came
    engine->FinishDeletions();
    ASSERT_EQ(Jobs().size(), 1U);
    EXPECT_EQ(Jobs().front().id, jobs[2].id);
    EXPECT_FALSE(platform::Exists(jobs[1].workDir));
    EXPECT_TRUE(platform::Exists(jobs[2].workDir));
    EXPECT_FALSE(IsNoted());
}

TEST_F(DeletionJournalTest, AJobThatIsNotTheOneNotedStays) {
    EnqueueWithDirectories(1);
    JobListInfo other = Jobs().front();
    other.workDir += L"2";
    notes.Add({other});
    engine->FinishDeletions();
    EXPECT_EQ(Jobs().size(), 1U);
    EXPECT_FALSE(IsNoted());
}

TEST_F(DeletionJournalTest, AWorkDirectoryThatCannotBeRemovedStaysNotedUntilItCan) {
    EnqueueWithDirectories(2);
    const std::vector<JobListInfo> jobs = Jobs();
    ASSERT_TRUE(platform::RemoveTree(jobs[0].workDir));
    WriteTextFile(jobs[0].workDir, "no folder, so it is not touched");
    EXPECT_EQ(Delete({jobs[0].id}).size(), 1U);
    EXPECT_TRUE(IsNoted());
    ASSERT_TRUE(platform::RemoveFile(jobs[0].workDir));
    ASSERT_TRUE(platform::EnsureDirectory(jobs[0].workDir));
    Delete({jobs[1].id});
    EXPECT_FALSE(platform::Exists(jobs[0].workDir));
    EXPECT_FALSE(IsNoted());
}

TEST_F(DeletionJournalTest, WhatDoesNotLieInTheWorkDirectoryIsNotNotedForEver) {
    EnqueueWithDirectories(1);
    JobListInfo job = Jobs().front();
    job.workDir = directory / L"elsewhere";
    ASSERT_TRUE(platform::EnsureDirectory(job.workDir));
    notes.Add({job});
    engine->FinishDeletions();
    EXPECT_TRUE(platform::Exists(job.workDir));
    EXPECT_FALSE(IsNoted());
}

TEST_F(DeletionJournalTest, AJobThatRunsIsNeitherNotedNorDeleted) {
    EnqueueWithDirectories(1);
    std::vector<JobStatusInfo> updated;
    engine->ExecuteJob(nullptr, updated);
    EXPECT_TRUE(Delete({L"1"}).empty());
    EXPECT_FALSE(IsNoted());
    EXPECT_EQ(Jobs().size(), 1U);
}

} // namespace
