#include "CommonControllerLib/JobEntry.h"

#include "kit/doubles/RecordingCompanion.h"
#include "kit/doubles/ScriptedProcess.h"

#include <gtest/gtest.h>

namespace {

using Lines = std::vector<std::wstring>;

JobListInfo Record() {
    JobListInfo record{};
    record.id = L"3f9a0c1";
    record.seqId = 7;
    record.progress = 30;
    record.status = JobStatus::Running;
    record.outputDir = L"D:\\out";
    record.workDir = L"C:\\work\\3f9a0c1";
    record.startTime = L"2024-03-05T07:08:09Z";
    record.endTime = L"2024-03-05T07:09:00Z";
    record.scenario.path = L"C:\\s\\mesh.rb";
    record.inputFiles = {L"C:\\m\\a.stl", L"C:\\m\\b.stl"};
    record.runArgument = L"--fine";
    record.extraText = L"note";
    return record;
}

/// Exposes private members.
class OpenJobEntry : public JobEntry {
public:
    using JobEntry::JobEntry;
    using JobEntry::scenarioDir;
    using JobEntry::scenarioSubDir;
};

class JobEntryTest : public testing::Test {
protected:
    Lines LogOfChange(JobStatus from, JobStatus to) {
        JobListInfo record = Record();
        record.status = from;
        companion.Forget();
        JobEntry(record).ChangeStatus(to);
        return companion.Events();
    }

    RecordingCompanion companion;
};

TEST_F(JobEntryTest, DefaultEntryIsQueuedAndEmpty) {
    JobEntry job;
    EXPECT_EQ(job.GetStatus(), JobStatus::Queued);
    EXPECT_EQ(job.GetProgress(), 0);
    EXPECT_EQ(job.GetId(), L"");
    EXPECT_EQ(job.GetWorkDir(), L"");
    EXPECT_EQ(job.GetOutputFolder(), L"");
    EXPECT_EQ(job.GetProcessHandle(), nullptr);
}

TEST_F(JobEntryTest, DefaultRecordIsQueuedWithProgressZeroAndEmptyTexts) {
    const JobListInfo record{};
    EXPECT_EQ(record.status, JobStatus::Queued);
    EXPECT_EQ(record.progress, 0);
    EXPECT_EQ(record.id + record.outputDir + record.workDir + record.startTime + record.endTime, L"");
    EXPECT_EQ(record.scenario, ScenarioInfo());
    EXPECT_TRUE(record.inputFiles.empty());
    EXPECT_EQ(record.runArgument + record.extraText, L"");
}

TEST_F(JobEntryTest, EntryShowsItsRecord) {
    JobEntry job(Record());
    EXPECT_EQ(job.GetJobListInfo(), Record());
    EXPECT_EQ(job.GetId(), L"3f9a0c1");
    EXPECT_EQ(job.GetSeqId(), 7);
    EXPECT_EQ(job.GetStatus(), JobStatus::Running);
    EXPECT_EQ(job.GetStatusString(), "Running");
    EXPECT_EQ(job.GetWorkDir(), L"C:\\work\\3f9a0c1");
    EXPECT_EQ(job.GetProgress(), 30);
}

TEST_F(JobEntryTest, StatusReportIsFilledFromTheRecord) {
    const JobStatusInfo expected{L"3f9a0c1",
                                 30,
                                 JobStatus::Running,
                                 L"D:\\out",
                                 L"C:\\work\\3f9a0c1",
                                 L"2024-03-05T07:08:09Z",
                                 L"2024-03-05T07:09:00Z"};
    EXPECT_EQ(JobEntry(Record()).GetJobStatusInfo(), expected);
}

TEST_F(JobEntryTest, EveryStatusHasItsString) {
    const char* const names[] = {"Queued", "Running", "Success", "Failed", "Dequeued", "Canceling", "Canceled"};
    for (std::int32_t value = 0; value < 7; ++value) {
        JobListInfo record = Record();
        record.status = static_cast<JobStatus>(value);
        EXPECT_EQ(JobEntry(record).GetStatusString(), names[value]);
    }
}

TEST_F(JobEntryTest, StatusOfSevenOrMoreOrBelowZeroIsUnknown) {
    for (const std::int32_t value : {7, 8, 1000, -1, -1000}) {
        JobListInfo record = Record();
        record.status = static_cast<JobStatus>(value);
        EXPECT_EQ(JobEntry(record).GetStatusString(), "Unknown");
    }
}

TEST_F(JobEntryTest, ChangingAStatusToItselfWritesNoLine) {
    EXPECT_EQ(LogOfChange(JobStatus::Running, JobStatus::Running), Lines());
    EXPECT_EQ(LogOfChange(JobStatus::Failed, JobStatus::Failed), Lines());
}

TEST_F(JobEntryTest, EndsOfJobsAreInfoLines) {
    EXPECT_EQ(LogOfChange(JobStatus::Running, JobStatus::Success), Lines{L"info: Job: 7 is finished."});
    EXPECT_EQ(LogOfChange(JobStatus::Running, JobStatus::Failed), Lines{L"info: Job: 7 is failed."});
    EXPECT_EQ(LogOfChange(JobStatus::Canceling, JobStatus::Canceled), Lines{L"info: Job: 7 is canceled."});
}

TEST_F(JobEntryTest, DequeuedIsReportedAsCanceled) {
    EXPECT_EQ(LogOfChange(JobStatus::Queued, JobStatus::Dequeued), Lines{L"info: Job: 7 is canceled."});
}

TEST_F(JobEntryTest, OtherStatusesAreDebugLines) {
    EXPECT_EQ(LogOfChange(JobStatus::Queued, JobStatus::Running), Lines{L"debug: Job: 7 is Running"});
    EXPECT_EQ(LogOfChange(JobStatus::Running, JobStatus::Canceling), Lines{L"debug: Job: 7 is Canceling"});
    EXPECT_EQ(LogOfChange(JobStatus::Running, JobStatus::Queued), Lines{L"debug: Job: 7 is Queued"});
    EXPECT_EQ(LogOfChange(JobStatus::Running, static_cast<JobStatus>(9)), Lines{L"debug: Job: 7 is Unknown"});
}

TEST_F(JobEntryTest, AnyTransitionIsAccepted) {
    JobEntry job(Record());
    job.ChangeStatus(JobStatus::Success);
    job.ChangeStatus(JobStatus::Queued);
    EXPECT_EQ(job.GetStatus(), JobStatus::Queued);
}

TEST_F(JobEntryTest, ScenarioDirectoriesAreKept) {
    OpenJobEntry job;
    job.SetScenarioDir(L"C:\\s\\", L"sub");
    EXPECT_EQ(job.scenarioDir, L"C:\\s\\");
    EXPECT_EQ(job.scenarioSubDir, L"sub");
    job.SetScenarioDir(job.scenarioDir, job.scenarioSubDir);
    EXPECT_EQ(job.scenarioDir, L"C:\\s\\");
    EXPECT_EQ(job.scenarioSubDir, L"sub");
}

TEST_F(JobEntryTest, RunRequestIsBuiltFromTheRecord) {
    JobEntry job(Record());
    std::wstring json;
    EXPECT_TRUE(job.CreateJsonString(json));
    EXPECT_EQ(json, L"run request of 3f9a0c1");
    const RecordingCompanion::RunRequest expected{L"3f9a0c1", L"C:\\s\\mesh.rb",    {L"C:\\m\\a.stl", L"C:\\m\\b.stl"},
                                                  L"",        L"C:\\work\\3f9a0c1", L"--fine"};
    EXPECT_EQ(companion.RunRequests(), std::vector{expected});
}

TEST_F(JobEntryTest, RunRequestThatCannotBeBuiltGivesFalse) {
    companion.canBuildRunRequests = false;
    std::wstring json = L"untouched";
    EXPECT_FALSE(JobEntry(Record()).CreateJsonString(json));
    EXPECT_EQ(json, L"untouched");
}

TEST_F(JobEntryTest, AnswerWithAHandleGivesTheEntryItsProcess) {
    const ScriptedProcess process;
    companion.processHandles[L"answer"] = process.Handle();
    JobEntry job(Record());
    EXPECT_TRUE(job.OnEvaluateJobInputResult(L"answer"));
    EXPECT_EQ(job.GetProcessHandle(), process.Handle());
}

TEST_F(JobEntryTest, AnswerWithoutAHandleChangesNothing) {
    const ScriptedProcess process;
    JobEntry job(Record());
    job.SetProcessHandle(process.Handle());
    EXPECT_FALSE(job.OnEvaluateJobInputResult(L"no answer"));
    EXPECT_EQ(job.GetProcessHandle(), process.Handle());
}

TEST_F(JobEntryTest, NewHandleDoesNotCloseTheOneBefore) {
    const ScriptedProcess first;
    const ScriptedProcess second;
    JobEntry job;
    job.SetProcessHandle(first.Handle());
    job.SetProcessHandle(second.Handle());
    EXPECT_TRUE(first.IsRunning());
    job.SetProcessHandle(first.Handle());
    job.CloseProcessHandle();
    job.SetProcessHandle(second.Handle());
}

TEST_F(JobEntryTest, ClosingTheHandleLeavesNone) {
    const ScriptedProcess process;
    JobEntry job;
    job.SetProcessHandle(process.Handle());
    job.CloseProcessHandle();
    EXPECT_EQ(job.GetProcessHandle(), nullptr);
    EXPECT_FALSE(process.IsRunning());
    job.CloseProcessHandle();
}

TEST_F(JobEntryTest, DestructionClosesTheHandle) {
    const ScriptedProcess process;
    {
        JobEntry job;
        job.SetProcessHandle(process.Handle());
        EXPECT_TRUE(process.IsRunning());
    }
    EXPECT_FALSE(process.IsRunning());
}

TEST_F(JobEntryTest, CopyHasTheSameHandleAndRecord) {
    const ScriptedProcess process;
    JobEntry job(Record());
    job.SetProcessHandle(process.Handle());
    JobEntry copy(job);
    EXPECT_EQ(copy.GetProcessHandle(), process.Handle());
    EXPECT_EQ(copy.GetJobListInfo(), Record());
    JobEntry assigned;
    assigned = job;
    EXPECT_EQ(assigned.GetProcessHandle(), process.Handle());
    assigned.SetProcessHandle(nullptr); // any of the three closes it
    copy.SetProcessHandle(nullptr);
}

} // namespace
