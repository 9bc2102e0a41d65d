#include "kit/engine/EngineFixture.h"

namespace {

/// Reports that arrive as text instead of files.
class ReportTest : public EngineFixture {
protected:
    ReportTest() {
        Start();
        EnqueueJobs(2);
        const std::wstring id = Job(2).GetId();
        companion.progressTexts[L"progress"] = {id, L"reading", 40};
        companion.resultTexts[L"success"] = {id, true};
        companion.resultTexts[L"failure"] = {id, false};
        companion.progressTexts[L"of nobody"] = {L"nobody", L"", 40};
        companion.resultTexts[L"of nobody"] = {L"nobody", true};
    }

    std::vector<JobStatusInfo> changed;
};

TEST_F(ReportTest, ProgressIsAppliedWrittenAndReported) {
    EXPECT_TRUE(engine->UpdateProgress(L"progress", changed));
    EXPECT_EQ(Job(2).GetProgress(), 40);
    EXPECT_EQ(StatusOf(2), JobStatus::Queued);
    EXPECT_EQ(changed, std::vector{Job(2).GetJobStatusInfo()});
    EXPECT_EQ(companion.Events(), Lines{L"write: " + companion.jobListFile});
}

TEST_F(ReportTest, FinishedJobTakesProgressToo) {
    Job(2).ChangeStatus(JobStatus::Success);
    EXPECT_TRUE(engine->UpdateProgress(L"progress", changed));
    EXPECT_EQ(Job(2).GetProgress(), 40);
}

TEST_F(ReportTest, UnreadableProgressIsSkipped) {
    EXPECT_FALSE(engine->UpdateProgress(L"{broken", changed));
    EXPECT_TRUE(changed.empty());
    EXPECT_EQ(companion.Events(), Lines{L"debug: Skip progress updates because a parse error has occurred: {broken"});
}

TEST_F(ReportTest, ProgressOfNobodyIsSkipped) {
    EXPECT_FALSE(engine->UpdateProgress(L"of nobody", changed));
    EXPECT_EQ(companion.Events(), Lines{L"debug: JobID: nobody is not found. Skip progress updates."});
}

TEST_F(ReportTest, JobsAreNotNamedByTheirNumberInReports) {
    companion.progressTexts[L"progress"].jobId = L"2";
    EXPECT_FALSE(engine->UpdateProgress(L"progress", changed));
}

TEST_F(ReportTest, ResultMakesAQueuedJobASuccessWithFullProgress) {
    EXPECT_TRUE(engine->UpdateResult(L"success", changed));
    EXPECT_EQ(StatusOf(2), JobStatus::Success);
    EXPECT_EQ(Job(2).GetProgress(), 100);
    EXPECT_EQ(Job(2).GetJobListInfo().endTime.size(), 20U);
    EXPECT_EQ(changed, std::vector{Job(2).GetJobStatusInfo()});
    EXPECT_EQ(companion.Events(), (Lines{L"info: Job: 2 is finished.", L"write: " + companion.jobListFile}));
}

TEST_F(ReportTest, ResultMakesAQueuedJobAFailureWithFullProgress) {
    EXPECT_TRUE(engine->UpdateResult(L"failure", changed));
    EXPECT_EQ(StatusOf(2), JobStatus::Failed);
    EXPECT_EQ(Job(2).GetProgress(), 100);
}

TEST_F(ReportTest, ResultLeavesTheProcessHandle) {
    const ScriptedProcess process;
    Job(2).SetProcessHandle(process.Handle());
    EXPECT_TRUE(engine->UpdateResult(L"success", changed));
    EXPECT_EQ(Job(2).GetProcessHandle(), process.Handle());
    EXPECT_TRUE(process.IsRunning());
}

TEST_F(ReportTest, ResultTakesThePreparedDirectoryAsOutputDirectory) {
    ASSERT_TRUE(Job(2).PrepareOutputDir());
    EXPECT_TRUE(engine->UpdateResult(L"success", changed));
    EXPECT_EQ(changed.at(0).outputDir, directory / L"out\\a");
}

TEST_F(ReportTest, UnreadableResultIsSkipped) {
    EXPECT_FALSE(engine->UpdateResult(L"{broken", changed));
    EXPECT_EQ(companion.Events(), Lines{L"debug: Skip result updates because a parse error has occurred: {broken"});
}

TEST_F(ReportTest, ResultOfNobodyIsSkipped) {
    EXPECT_FALSE(engine->UpdateResult(L"of nobody", changed));
    EXPECT_EQ(companion.Events(), Lines{L"debug: JobID: nobody is not found. Skip result updates."});
}

TEST_F(ReportTest, CanceledChangesTheStatusAlone) {
    Job(2).ChangeStatus(JobStatus::Canceling);
    companion.Forget();
    const JobListInfo before = Job(2).GetJobListInfo();
    EXPECT_TRUE(engine->UpdateToCanceled(L"success", changed));
    JobListInfo expected = before;
    expected.status = JobStatus::Canceled;
    EXPECT_EQ(Job(2).GetJobListInfo(), expected);
    EXPECT_EQ(changed, std::vector{Job(2).GetJobStatusInfo()});
    EXPECT_EQ(companion.Events(), (Lines{L"info: Job: 2 is canceled.", L"write: " + companion.jobListFile}));
}

TEST_F(ReportTest, UnreadableCancellationIsSkipped) {
    EXPECT_FALSE(engine->UpdateToCanceled(L"{broken", changed));
    EXPECT_EQ(companion.Events(),
              Lines{L"debug: Skip \"Canceled\" status updates because a parse error has occurred: {broken"});
}

TEST_F(ReportTest, CancellationOfNobodyIsSkipped) {
    EXPECT_FALSE(engine->UpdateToCanceled(L"of nobody", changed));
    EXPECT_EQ(companion.Events(), Lines{L"debug: JobID: nobody is not found. Skip \"Canceled\" status updates."});
}

TEST_F(ReportTest, ReportsAreParsedBeforeTheEngineIsLocked) {
    std::vector<bool> wasFree;
    companion.onParse = [&] { wasFree.push_back(IsEngineFree()); };
    EXPECT_TRUE(engine->UpdateProgress(L"progress", changed));
    EXPECT_TRUE(engine->UpdateResult(L"success", changed));
    EXPECT_TRUE(engine->UpdateToCanceled(L"success", changed));
    EXPECT_EQ(wasFree, std::vector<bool>(3, true));
}

TEST_F(ReportTest, TheListIsWrittenUnderTheLockBeforeTheChangeIsReported) {
    std::vector<std::size_t> reported;
    companion.onWrite = [&] {
        reported.push_back(changed.size());
        EXPECT_FALSE(IsEngineFree());
    };
    EXPECT_TRUE(engine->UpdateProgress(L"progress", changed));
    EXPECT_TRUE(engine->UpdateResult(L"success", changed));
    EXPECT_TRUE(engine->UpdateToCanceled(L"success", changed));
    EXPECT_EQ(reported, (std::vector<std::size_t>{0, 1, 2}));
}

TEST_F(ReportTest, ReportsAreAppendedToWhatTheCallerHas) {
    changed.resize(1);
    EXPECT_TRUE(engine->UpdateProgress(L"progress", changed));
    EXPECT_TRUE(engine->UpdateResult(L"success", changed));
    EXPECT_TRUE(engine->UpdateToCanceled(L"success", changed));
    EXPECT_EQ(changed.size(), 4U);
    EXPECT_EQ(changed[0], JobStatusInfo());
}

} // namespace
