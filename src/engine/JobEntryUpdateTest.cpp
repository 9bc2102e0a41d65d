#include "CommonControllerLib/JobEntry.h"

#include "kit/TemporaryDirectory.h"
#include "kit/doubles/RecordingCompanion.h"
#include "kit/doubles/ScriptedProcess.h"

#include <gtest/gtest.h>

namespace {

using Lines = std::vector<std::wstring>;

const std::wstring progressFile = L"C:\\work\\1\\progress_info_list.json";
const std::wstring resultFile = L"C:\\work\\1\\run_scenario_result.json";

class OpenJobEntry : public JobEntry {
public:
    using JobEntry::info;
    using JobEntry::JobEntry;
    using JobEntry::progressMessage;
};

class JobEntryUpdateTest : public testing::Test {
protected:
    JobEntryUpdateTest() {
        job.info.seqId = 7;
        job.info.status = JobStatus::Running;
        job.info.progress = 30;
        job.info.workDir = L"C:\\work\\1";
        job.info.outputDir = L"D:\\out";
    }

    void StartProcess() { job.SetProcessHandle(process.Handle()); }
    void ReportProgress(int progress) { companion.progressFiles[progressFile] = {L"", L"reading", progress}; }
    void ReportResult(bool succeeded) { companion.resultFiles[resultFile] = {L"", succeeded}; }

    RecordingCompanion companion;
    ScriptedProcess process;
    OpenJobEntry job;
};

TEST_F(JobEntryUpdateTest, NewProgressOfARunningProcessIsTaken) {
    StartProcess();
    ReportProgress(40);
    EXPECT_TRUE(job.OnCheckUpdate());
    EXPECT_EQ(job.GetProgress(), 40);
    EXPECT_EQ(job.GetStatus(), JobStatus::Running);
    EXPECT_EQ(job.GetJobListInfo().endTime, L"");
    EXPECT_EQ(companion.FilesRead(), Lines{progressFile});
    EXPECT_EQ(companion.Events(), Lines());
}

TEST_F(JobEntryUpdateTest, ProgressThatTheJobHasAlreadyIsNoChange) {
    StartProcess();
    ReportProgress(30);
    EXPECT_FALSE(job.OnCheckUpdate());
}

TEST_F(JobEntryUpdateTest, MissingProgressFileIsNoChange) {
    StartProcess();
    EXPECT_FALSE(job.OnCheckUpdate());
    EXPECT_EQ(job.GetProgress(), 30);
    EXPECT_EQ(companion.Events(), Lines());
}

TEST_F(JobEntryUpdateTest, ProgressMayFall) {
    StartProcess();
    ReportProgress(10);
    EXPECT_TRUE(job.OnCheckUpdate());
    EXPECT_EQ(job.GetProgress(), 10);
}

TEST_F(JobEntryUpdateTest, FirstProgressMessageIsNotStored) {
    job.UpdateProgress(40, L"reading");
    EXPECT_EQ(job.progressMessage, L"");
}

TEST_F(JobEntryUpdateTest, ProgressMessageReplacesAnEarlierOne) {
    job.progressMessage = L"earlier";
    job.UpdateProgress(40, L"reading");
    EXPECT_EQ(job.progressMessage, L"reading");
}

TEST_F(JobEntryUpdateTest, JobWithoutAProcessIsOverAtTheFirstLook) {
    ReportResult(true);
    EXPECT_TRUE(job.OnCheckUpdate());
    EXPECT_EQ(job.GetStatus(), JobStatus::Success);
}

TEST_F(JobEntryUpdateTest, EndedProcessWithASuccessfulResultIsASuccess) {
    StartProcess();
    ReportResult(true);
    process.Finish();
    EXPECT_TRUE(job.OnCheckUpdate());
    EXPECT_EQ(job.GetStatus(), JobStatus::Success);
    EXPECT_EQ(job.GetProgress(), 100);
    EXPECT_EQ(job.GetJobListInfo().endTime.size(), 20U);
    EXPECT_EQ(companion.FilesRead(), Lines{resultFile});
    EXPECT_EQ(companion.Events(), Lines{L"info: Job: 7 is finished."});
}

TEST_F(JobEntryUpdateTest, EndedProcessLosesItsHandle) {
    StartProcess();
    process.Finish();
    job.OnCheckUpdate();
    EXPECT_EQ(job.GetProcessHandle(), nullptr);
}

TEST_F(JobEntryUpdateTest, ResultThatDidNotSucceedIsAFailure) {
    ReportResult(false);
    EXPECT_TRUE(job.OnCheckUpdate());
    EXPECT_EQ(job.GetStatus(), JobStatus::Failed);
    EXPECT_EQ(companion.Events(), Lines{L"info: Job: 7 is failed."});
}

TEST_F(JobEntryUpdateTest, MissingResultFileIsAFailure) {
    EXPECT_TRUE(job.OnCheckUpdate());
    EXPECT_EQ(job.GetStatus(), JobStatus::Failed);
    EXPECT_EQ(job.GetProgress(), 100);
}

TEST_F(JobEntryUpdateTest, CancelingJobWhoseProcessHasEndedIsCanceledWhateverItsResult) {
    StartProcess();
    job.info.status = JobStatus::Canceling;
    ReportResult(true);
    process.Finish();
    EXPECT_TRUE(job.OnCheckUpdate());
    EXPECT_EQ(job.GetStatus(), JobStatus::Canceled);
    EXPECT_EQ(job.GetProgress(), 100);
    EXPECT_EQ(companion.FilesRead(), Lines());
    EXPECT_EQ(companion.Events(), Lines{L"info: Job: 7 is canceled."});
}

TEST_F(JobEntryUpdateTest, CancelingJobWhoseProcessStillRunsReportsProgress) {
    StartProcess();
    job.info.status = JobStatus::Canceling;
    ReportResult(true);
    ReportProgress(40);
    EXPECT_TRUE(job.OnCheckUpdate());
    EXPECT_EQ(job.GetStatus(), JobStatus::Canceling);
    EXPECT_EQ(job.GetProgress(), 40);
}

TEST_F(JobEntryUpdateTest, EndedJobHasItsPreparedDirectoryAsOutputDirectory) {
    const TemporaryDirectory directory;
    job.info.outputDir = directory.Path();
    job.info.inputFiles = {L"part.prt"};
    ASSERT_TRUE(job.PrepareOutputDir());
    job.OnCheckUpdate();
    EXPECT_EQ(job.GetJobListInfo().outputDir, directory / L"part");
}

TEST_F(JobEntryUpdateTest, WithoutAPreparedDirectoryTheOutputDirectoryStays) {
    job.OnCheckUpdate();
    EXPECT_EQ(job.GetJobListInfo().outputDir, L"D:\\out");
}

} // namespace
