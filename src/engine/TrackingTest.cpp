#include "kit/engine/EngineFixture.h"

namespace {

/// The effects of a poll on running jobs.
class TrackingTest : public EngineFixture {
protected:
    TrackingTest() { Start(); }

    void StartJob() {
        EnqueueJobs(1);
        Execute();
        companion.Forget();
    }
};

TEST_F(TrackingTest, ChangedProgressIsReportedAndWritten) {
    StartJob();
    ReportProgress(1, 40);
    const std::vector<JobStatusInfo> changed = Poll();
    EXPECT_EQ(changed, std::vector{Job(1).GetJobStatusInfo()});
    EXPECT_EQ(changed.at(0).progress, 40);
    EXPECT_EQ(companion.Events(), Lines{L"write: " + companion.jobListFile});
}

TEST_F(TrackingTest, ProgressThatTheJobHasAlreadyIsNeitherReportedNorWritten) {
    StartJob();
    ReportProgress(1, 40);
    Poll();
    companion.Forget();
    EXPECT_EQ(Poll(), std::vector<JobStatusInfo>());
    EXPECT_EQ(JobListWriteCount(), 0U);
}

TEST_F(TrackingTest, EndedProcessMovesTheJobToItsResult) {
    StartJob();
    ReportResult(1, true);
    FinishProcess(1);
    EXPECT_EQ(Poll().size(), 1U);
    EXPECT_EQ(StatusOf(1), JobStatus::Success);
    EXPECT_EQ(Job(1).GetJobListInfo().outputDir, directory / L"out\\a");
    EXPECT_EQ(companion.Events(), (Lines{L"info: Job: 1 is finished.", L"write: " + companion.jobListFile}));
}

TEST_F(TrackingTest, RunningJobWithoutAProcessIsOverAtTheFirstPoll) {
    script.answer = [](const test_modules::Call&, std::wstring&) { return 0L; };
    StartJob();
    EXPECT_EQ(Poll().size(), 1U);
    EXPECT_EQ(StatusOf(1), JobStatus::Failed);
}

TEST_F(TrackingTest, WithoutActiveJobsNothingIsReportedOrWritten) {
    EnqueueJobs(2);
    std::vector<JobStatusInfo> changed;
    EXPECT_FALSE(engine->CheckUpdate(changed));
    EXPECT_EQ(companion.Events(), Lines());
}

TEST_F(TrackingTest, RecordsPassedInCountAsAChange) {
    std::vector<JobStatusInfo> changed(1);
    EXPECT_TRUE(engine->CheckUpdate(changed));
    EXPECT_EQ(changed.size(), 1U);
    EXPECT_EQ(JobListWriteCount(), 1U);
}

TEST_F(TrackingTest, InactiveJobsAreNotLookedAt) {
    EnqueueJobs(5);
    Job(2).ChangeStatus(JobStatus::Success);
    Job(3).ChangeStatus(JobStatus::Failed);
    Job(4).ChangeStatus(JobStatus::Dequeued);
    Job(5).ChangeStatus(JobStatus::Canceled);
    Poll();
    EXPECT_EQ(companion.FilesRead(), Lines());
}

TEST_F(TrackingTest, SeveralChangesAreOneWriteInListOrder) {
    EnqueueJobs(2);
    Job(1).ChangeStatus(JobStatus::Running);
    Job(2).ChangeStatus(JobStatus::Canceling);
    companion.Forget();
    const std::vector<JobStatusInfo> changed = Poll();
    EXPECT_EQ(changed, (std::vector{Job(1).GetJobStatusInfo(), Job(2).GetJobStatusInfo()}));
    EXPECT_EQ(JobListWriteCount(), 1U);
}

TEST_F(TrackingTest, QueueIsNotCompletedWhileAJobWaits) {
    EXPECT_TRUE(engine->IsCompleted());
    EnqueueJobs(1);
    EXPECT_FALSE(engine->IsCompleted());
}

TEST_F(TrackingTest, QueueIsNotCompletedWhileAJobIsActiveWithTheCursorAtTheEnd) {
    for (const JobStatus status : {JobStatus::Running, JobStatus::Canceling}) {
        Start({SavedJob(1, JobStatus::Success)});
        Job(1).ChangeStatus(status);
        EXPECT_EQ(NumberAtCursor(), 0);
        EXPECT_FALSE(engine->IsCompleted());
    }
}

TEST_F(TrackingTest, QueueIsCompletedWhenAllJobsHaveEnded) {
    Start({SavedJob(1, JobStatus::Success), SavedJob(2, JobStatus::Failed), SavedJob(3, JobStatus::Canceled)});
    EXPECT_TRUE(engine->IsCompleted());
}

/// Refuses every change, and counts the requests.
class StubbornJob : public JobEntry {
public:
    using JobEntry::JobEntry;
    bool OnCheckUpdate() override {
        ++looks;
        return false;
    }
    int looks = 0;
};

TEST_F(TrackingTest, DerivedJobsDecideThemselvesWhatIsAChange) {
    const auto job = std::make_shared<StubbornJob>(SavedJob(1, JobStatus::Running));
    engine->jobList.push_back(job);
    EXPECT_EQ(Poll(), std::vector<JobStatusInfo>());
    EXPECT_EQ(job->looks, 1);
}

} // namespace
