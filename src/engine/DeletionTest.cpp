#include "kit/engine/EngineFixture.h"

namespace {

class DeletionTest : public EngineFixture {
protected:
    DeletionTest() {
        Start({SavedJob(3, JobStatus::Success), SavedJob(4, JobStatus::Failed), SavedJob(5, JobStatus::Canceled)});
        companion.Forget();
    }

    Lines Delete(std::vector<std::wstring> ids) {
        Lines deleted;
        EXPECT_TRUE(engine->DeleteJobs(ids, deleted));
        return deleted;
    }

    std::vector<std::int32_t> Listed() {
        std::vector<std::int32_t> numbers;
        for (const auto& job : engine->jobList) {
            numbers.push_back(job->GetSeqId());
        }
        return numbers;
    }
};

using Numbers = std::vector<std::int32_t>;

TEST_F(DeletionTest, JobNamedByItsIdLosesItsWorkDirectoryAndItsRow) {
    EXPECT_EQ(Delete({L"saved4"}), Lines{L"saved4"});
    EXPECT_EQ(Listed(), (Numbers{3, 5}));
    EXPECT_EQ(companion.Events(),
              (Lines{L"remove: C:\\work\\saved4", L"debug: Job: 4 is deleted", L"write: " + companion.jobListFile}));
    EXPECT_EQ(companion.JobListWrites().back().size(), 2U);
}

TEST_F(DeletionTest, JobNamedByItsNumberIsDeletedAndListedByThatText) {
    EXPECT_EQ(Delete({L"4"}), Lines{L"4"});
    EXPECT_EQ(Listed(), (Numbers{3, 5}));
}

TEST_F(DeletionTest, ActiveJobsAreNotDeletedNorListed) {
    for (const JobStatus status : {JobStatus::Running, JobStatus::Canceling}) {
        Job(4).ChangeStatus(status);
        companion.Forget();
        EXPECT_EQ(Delete({L"saved4", L"4"}), Lines());
        EXPECT_EQ(Listed(), (Numbers{3, 4, 5}));
        EXPECT_EQ(companion.Events(), Lines());
    }
}

TEST_F(DeletionTest, QueuedAndDequeuedJobsAreDeleted) {
    Start();
    EnqueueJobs(2);
    Job(2).ChangeStatus(JobStatus::Dequeued);
    EXPECT_EQ(Delete({L"1", L"2"}), (Lines{L"1", L"2"}));
    EXPECT_EQ(Listed(), Numbers());
}

TEST_F(DeletionTest, UnknownIdIsNotListedAndWritesNoFile) {
    EXPECT_EQ(Delete({L"nobody"}), Lines());
    EXPECT_EQ(companion.Events(), Lines());
}

TEST_F(DeletionTest, DeletedIdsStandInTheOrderOfTheRequest) {
    EXPECT_EQ(Delete({L"saved5", L"nobody", L"3"}), (Lines{L"saved5", L"3"}));
}

TEST_F(DeletionTest, UnknownIdGivenTwiceIsListedOnce) {
    EXPECT_EQ(Delete({L"nobody", L"nobody"}), Lines{L"nobody"});
}

TEST_F(DeletionTest, DeletedIdGivenTwiceIsListedTwice) {
    EXPECT_EQ(Delete({L"saved3", L"saved3"}), (Lines{L"saved3", L"saved3"}));
}

TEST_F(DeletionTest, ElementsPassedInCountAsDeletedForTheFile) {
    std::vector<std::wstring> ids;
    Lines deleted{L"earlier"};
    engine->DeleteJobs(ids, deleted);
    EXPECT_EQ(deleted, Lines{L"earlier"});
    EXPECT_EQ(JobListWriteCount(), 1U);
}

TEST_F(DeletionTest, DeletingEveryJobRestartsTheNumbering) {
    EXPECT_EQ(Delete({L"3", L"4", L"5"}).size(), 3U);
    const Lines events = companion.Events();
    ASSERT_GE(events.size(), 2U);
    EXPECT_EQ(events[events.size() - 2], L"write: " + companion.jobListFile);
    EXPECT_EQ(events.back(), L"debug: Reset sequence ID");
    EnqueueJobs(1);
    EXPECT_EQ(Listed(), Numbers{1});
}

TEST_F(DeletionTest, WhileJobsAreLeftTheNumberingGoesOn) {
    Delete({L"5"});
    EnqueueJobs(1);
    EXPECT_EQ(Listed(), (Numbers{3, 4, 6}));
}

TEST_F(DeletionTest, DeletingTheJobAtTheCursorMovesItToTheFollowingOne) {
    EnqueueJobs(3);
    EXPECT_EQ(NumberAtCursor(), 6);
    Delete({L"6"});
    EXPECT_EQ(NumberAtCursor(), 7);
    Execute();
    EXPECT_EQ(StatusOf(7), JobStatus::Running);
}

TEST_F(DeletionTest, DeletingTheLastJobAtTheCursorMovesItToTheEnd) {
    EnqueueJobs(1);
    Delete({L"6"});
    EXPECT_EQ(NumberAtCursor(), 0);
    EXPECT_TRUE(engine->IsCompleted());
}

TEST_F(DeletionTest, WorkDirectoryThatCannotBeRemovedDoesNotKeepTheJob) {
    companion.canRemoveWorkDirectories = false;
    EXPECT_EQ(Delete({L"saved4"}), Lines{L"saved4"});
    EXPECT_EQ(Listed(), (Numbers{3, 5}));
}

TEST_F(DeletionTest, WorkDirectoryIsTheTextUpToItsFirstZero) {
    JobListInfo job = SavedJob(1, JobStatus::Success);
    job.workDir = std::wstring(L"C:\\work\\1\0\\behind", 18);
    Start({job});
    Delete({L"1"});
    EXPECT_EQ(companion.Events(L"remove: "), Lines{L"C:\\work\\1"});
}

TEST_F(DeletionTest, DeletedIdsAreNeverHandedOutAgain) {
    Delete({L"saved3"});
    EXPECT_TRUE(engine->knownJobIds.contains(L"saved3"));
}

TEST_F(DeletionTest, EntryLivesAsLongAsSomebodyHoldsIt) {
    const std::weak_ptr<JobEntry> entry = engine->jobList.front();
    Delete({L"saved3"});
    EXPECT_TRUE(entry.expired());
}

} // namespace
