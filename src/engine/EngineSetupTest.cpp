#include "kit/engine/EngineFixture.h"

#include <limits>

namespace {

class EngineSetupTest : public EngineFixture {
protected:
    JobListInfo FinishedJob(std::int32_t seqId, const std::wstring& startTime) {
        JobListInfo job = SavedJob(seqId, JobStatus::Success);
        job.startTime = startTime;
        return job;
    }

    /// The numbers of the listed jobs.
    std::vector<std::int32_t> Listed() {
        std::vector<std::int32_t> numbers;
        for (const auto& job : engine->jobList) {
            numbers.push_back(job->GetSeqId());
        }
        return numbers;
    }
};

using Numbers = std::vector<std::int32_t>;

TEST_F(EngineSetupTest, MissingJobListFileGivesAnEmptyEngine) {
    engine = std::make_unique<OpenEngine>(&functions);
    EXPECT_EQ(Listed(), Numbers());
    EXPECT_EQ(engine->nextSeqId, 1);
    EXPECT_EQ(companion.Events(), Lines{L"debug: Read job_list.json"});
}

TEST_F(EngineSetupTest, EmptyJobListFileMakesTheNextNumberOne) {
    Start({});
    EXPECT_EQ(engine->nextSeqId, 1);
    EXPECT_EQ(companion.Events(), Lines{L"debug: Read job_list.json"});
}

TEST_F(EngineSetupTest, JobsNumbered3And9MakeTheNextNumber10) {
    Start({SavedJob(3, JobStatus::Success), SavedJob(9, JobStatus::Failed)});
    EXPECT_EQ(engine->nextSeqId, 10);
}

TEST_F(EngineSetupTest, JobsNumbered3And9And5MakeTheNextNumber10) {
    Start({SavedJob(3, JobStatus::Success), SavedJob(9, JobStatus::Failed), SavedJob(5, JobStatus::Canceled)});
    EXPECT_EQ(engine->nextSeqId, 10);
    EXPECT_EQ(Listed(), (Numbers{3, 9, 5}));
}

TEST_F(EngineSetupTest, LargestNumberIsFollowedByTheSmallest) {
    Start({SavedJob(std::numeric_limits<std::int32_t>::max(), JobStatus::Success)});
    EXPECT_EQ(engine->nextSeqId, std::numeric_limits<std::int32_t>::min());
}

TEST_F(EngineSetupTest, RunningAndDequeuedJobsAreCanceled) {
    Start({SavedJob(1, JobStatus::Running), SavedJob(2, JobStatus::Dequeued)});
    EXPECT_EQ(StatusOf(1), JobStatus::Canceled);
    EXPECT_EQ(StatusOf(2), JobStatus::Canceled);
    EXPECT_EQ(companion.Events(),
              (Lines{L"debug: Read job_list.json", L"info: Job: 1 is canceled.", L"info: Job: 2 is canceled."}));
}

TEST_F(EngineSetupTest, WhateverWasNotFinishedIsCanceled) {
    for (const JobStatus status : {JobStatus::Queued, JobStatus::Canceling, static_cast<JobStatus>(9)}) {
        Start({SavedJob(1, status)});
        EXPECT_EQ(StatusOf(1), JobStatus::Canceled);
    }
}

TEST_F(EngineSetupTest, FinishedJobsStayAsTheyAre) {
    for (const JobStatus status : {JobStatus::Success, JobStatus::Failed, JobStatus::Canceled}) {
        companion.Forget();
        Start({SavedJob(1, status)});
        EXPECT_EQ(StatusOf(1), status);
        EXPECT_EQ(companion.Events(), Lines{L"debug: Read job_list.json"});
    }
}

TEST_F(EngineSetupTest, JobListFileIsNotWrittenAfterLoading) {
    Start({SavedJob(1, JobStatus::Running)});
    EXPECT_EQ(JobListWriteCount(), 0U);
}

TEST_F(EngineSetupTest, NoLoadedJobWaitsForExecution) {
    Start({SavedJob(1, JobStatus::Queued)});
    EXPECT_EQ(NumberAtCursor(), 0);
    EXPECT_TRUE(engine->IsCompleted());
    EXPECT_EQ(Execute(), std::vector<JobStatusInfo>());
}

TEST_F(EngineSetupTest, IdsOfLoadedJobsAreKnown) {
    Start({SavedJob(1, JobStatus::Success), SavedJob(2, JobStatus::Success)});
    EXPECT_EQ(engine->knownJobIds, (std::set<std::wstring>{L"saved1", L"saved2"}));
}

TEST_F(EngineSetupTest, LoadedJobsKeepTheirRecords) {
    const JobListInfo saved = FinishedJob(4, L"2024-03-05T07:08:09Z");
    Start({saved});
    EXPECT_EQ(Job(4).GetJobListInfo(), saved);
}

TEST_F(EngineSetupTest, JobStartedBeyondTheAgeLimitIsDeletedAndSoIsOneThatNeverStarted) {
    companion.autoDeleteDays = 1;
    Start({FinishedJob(1, StartedHoursAgo(25)), FinishedJob(2, StartedHoursAgo(23)), FinishedJob(3, L"")});
    EXPECT_EQ(Listed(), Numbers{2});
    EXPECT_EQ(companion.Events(),
              (Lines{L"debug: Read job_list.json", L"remove: C:\\work\\saved1", L"debug: Job: 1 is deleted",
                     L"remove: C:\\work\\saved3", L"debug: Job: 3 is deleted", L"write: " + companion.jobListFile,
                     L"info: 2 jobs are deleted."}));
}

TEST_F(EngineSetupTest, AgeLimitOfSeveralDaysCountsInDays) {
    companion.autoDeleteDays = 3;
    Start({FinishedJob(1, StartedHoursAgo(71)), FinishedJob(2, StartedHoursAgo(73))});
    EXPECT_EQ(Listed(), Numbers{1});
}

TEST_F(EngineSetupTest, WithoutOldJobsNothingIsDeletedOrLogged) {
    companion.autoDeleteDays = 1;
    Start({FinishedJob(1, StartedHoursAgo(1))});
    EXPECT_EQ(Listed(), Numbers{1});
    EXPECT_EQ(companion.Events(), Lines{L"debug: Read job_list.json"});
}

TEST_F(EngineSetupTest, WithZeroDaysNothingIsDeleted) {
    for (const int days : {0, -1}) {
        companion.autoDeleteDays = days;
        Start({FinishedJob(1, L"")});
        EXPECT_EQ(Listed(), Numbers{1});
    }
}

TEST_F(EngineSetupTest, WithoutAutomaticDeletionNothingIsDeleted) {
    companion.autoDeleteDays = std::nullopt;
    Start({FinishedJob(1, L"")});
    EXPECT_EQ(Listed(), Numbers{1});
}

TEST_F(EngineSetupTest, InterruptedJobThatNeverStartedIsCanceledAndThenDeleted) {
    companion.autoDeleteDays = 1;
    Start({SavedJob(1, JobStatus::Queued)});
    EXPECT_EQ(Listed(), Numbers());
    EXPECT_EQ(engine->nextSeqId, 1);
    EXPECT_EQ(companion.Events(L"info: "), (Lines{L"Job: 1 is canceled.", L"1 jobs are deleted."}));
}

/// An engine with its own entry class.
class DerivedEngine : public OpenEngine {
public:
    using OpenEngine::OpenEngine;
    int made = 0;

protected:
    JobEntry* CreateNewJobEntry(const JobListInfo* info) override {
        ++made;
        return JobEntryManagerBase::CreateNewJobEntry(info);
    }
};

TEST_F(EngineSetupTest, LoadedJobsAreMadeByTheBaseAndEnqueuedOnesByTheDerivedEngine) {
    companion.savedJobs = {SavedJob(1, JobStatus::Success)};
    auto derived = std::make_unique<DerivedEngine>(&functions);
    const DerivedEngine& counted = *derived;
    engine = std::move(derived);
    EXPECT_EQ(counted.made, 0);
    EnqueueJobs(2);
    EXPECT_EQ(counted.made, 2);
}

/// Exposes the result of the protected operation for a null record.
class MakingEngine : public OpenEngine {
public:
    using JobEntryManagerBase::CreateNewJobEntry;
    using OpenEngine::OpenEngine;
};

TEST_F(EngineSetupTest, WithoutARecordANewEntryIsADefaultOne) {
    MakingEngine making(&functions);
    const std::unique_ptr<JobEntry> job(making.CreateNewJobEntry(nullptr));
    EXPECT_EQ(job->GetId(), L"");
    EXPECT_EQ(job->GetStatus(), JobStatus::Queued);
}

TEST_F(EngineSetupTest, DestructionClosesTheHandlesOfRunningJobs) {
    Start();
    EnqueueJobs(1);
    Execute();
    const ScriptedProcess process = processes.begin()->second;
    EXPECT_TRUE(process.IsRunning());
    engine.reset();
    EXPECT_FALSE(process.IsRunning());
}

} // namespace
