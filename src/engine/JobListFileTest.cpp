#include "kit/engine/EngineFixture.h"

#include "CommonControllerLib/ControllerLogManager.h"

namespace {

class JobListFileTest : public EngineFixture {};

TEST_F(JobListFileTest, EveryRecordIsAppendedInListOrder) {
    Start({SavedJob(3, JobStatus::Success), SavedJob(9, JobStatus::Failed)});
    std::vector<JobListInfo> records{SavedJob(1, JobStatus::Queued)};
    EXPECT_TRUE(engine->GetJobList(records));
    EXPECT_EQ(records, (std::vector{SavedJob(1, JobStatus::Queued), SavedJob(3, JobStatus::Success),
                                    SavedJob(9, JobStatus::Failed)}));
}

TEST_F(JobListFileTest, FileIsAFullSnapshotWithTheRepairedStatuses) {
    Start({SavedJob(1, JobStatus::Running), SavedJob(2, JobStatus::Success)});
    EnqueueJobsInfo request = Request({});
    JobEnqueueResult result;
    EXPECT_TRUE(engine->EnqueueJob(request, result));
    EXPECT_EQ(companion.JobListWrites().back(),
              (std::vector{SavedJob(1, JobStatus::Canceled), SavedJob(2, JobStatus::Success)}));
}

TEST_F(JobListFileTest, WritingIsLoggedOneLevelMoreDetailed) {
    Start();
    companion.Forget();
    ControllerLogManager::Initialize(1, L"C:\\log\\detailed.log", false);
    Enqueue({});
    ControllerLogManager::Initialize(0, L"C:\\log\\controller.log", false);
    EXPECT_EQ(companion.Events(L"debug: "), Lines{L"Update job_list.json"});
}

TEST_F(JobListFileTest, FailedWriteIsNotReportedAndTheNextChangeWritesAll) {
    Start();
    companion.canWriteFiles = false;
    Enqueue({{Input(L"a.stl")}});
    companion.canWriteFiles = true;
    Enqueue({{Input(L"a.stl")}});
    EXPECT_EQ(companion.JobListWrites().back().size(), 2U);
    EXPECT_EQ(companion.Events(L"error: "), Lines());
}

TEST_F(JobListFileTest, ListSurvivesARestart) {
    Start();
    EnqueueJobs(2);
    Execute();
    ReportResult(1, true);
    FinishProcess(1);
    Poll();
    Start(companion.JobListWrites().back());
    EXPECT_EQ(StatusOf(1), JobStatus::Success);
    EXPECT_EQ(StatusOf(2), JobStatus::Canceled);
    EXPECT_EQ(engine->nextSeqId, 3);
}

} // namespace
