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

TEST_F(JobListFileTest, EachRewriteHoldsTheRecordsOfItsMoment) {
    Start();
    EnqueueJobs(4);
    const auto expectWritten = [this] {
        std::vector<JobListInfo> records;
        engine->GetJobList(records);
        EXPECT_EQ(companion.JobListWrites().back(), records);
    };
    Execute();
    expectWritten();
    std::vector<std::wstring> second{L"2"};
    Lines deleted;
    engine->DeleteJobs(second, deleted);
    expectWritten();
    ReportProgress(1, 40);
    Poll();
    expectWritten();
    Enqueue({{Input(L"b.stl")}});
    expectWritten();
}

/// A job of an application, which changes its record on its own.
class SelfChangingJob : public JobEntry {
public:
    using JobEntry::JobEntry;
    void SetExtraText(const std::wstring& text) { info.extraText = text; }
};

TEST_F(JobListFileTest, RecordThatAnApplicationChangedItselfIsInTheNextRewrite) {
    Start({SavedJob(1, JobStatus::Success)});
    const auto job = std::make_shared<SelfChangingJob>(SavedJob(2, JobStatus::Success));
    engine->jobList.push_back(job);
    Enqueue({});
    job->SetExtraText(L"changed");
    Enqueue({});
    EXPECT_EQ(companion.JobListWrites().back().back().extraText, L"changed");
}

TEST_F(JobListFileTest, EnginesOfOneProcessWriteEachItsOwnList) {
    const std::vector first{SavedJob(1, JobStatus::Success), SavedJob(2, JobStatus::Failed)};
    const std::vector second{SavedJob(3, JobStatus::Success)};
    Start(first);
    companion.savedJobs = second;
    OpenEngine other(&functions);
    EnqueueJobsInfo request = Request({});
    JobEnqueueResult result;
    for (int i = 0; i < 2; ++i) {
        EXPECT_TRUE(engine->EnqueueJob(request, result));
        EXPECT_EQ(companion.JobListWrites().back(), first);
        EXPECT_TRUE(other.EnqueueJob(request, result));
        EXPECT_EQ(companion.JobListWrites().back(), second);
    }
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
