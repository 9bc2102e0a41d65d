#include "front_end/jobs/JobRow.h"

#include "formats/JobStates.h"
#include "formats/RunProtocol.h"
#include "kit/TemporaryDirectory.h"
#include "text/Text.h"

#include <gtest/gtest.h>

namespace {

using front_end::JobModel;
using front_end::JobRow;
using front_end::ViewOf;

/// A job with its output directory below "/out".
class JobRowTest : public testing::Test {
protected:
    JobListInfo Job(JobStatus status, std::int32_t progress = 0) const {
        JobListInfo job{};
        job.id = L"id1";
        job.seqId = 1;
        job.status = status;
        job.progress = progress;
        job.inputFiles = {L"/in/part.stl"};
        job.outputDir = L"/out";
        job.workDir = directory / L"work";
        return job;
    }

    void Write(const std::wstring& name, const std::wstring& json) const {
        WriteTextFile(directory / (L"work\\" + name), text::ToUtf8(json));
    }

    /// Writes the run request of the job.
    void WriteRequest() const {
        run_protocol::RunScenarioInfo request;
        request.jobId = L"id1";
        request.outputFolder = L"/out/part";
        Write(run_protocol::runInfoFileName, run_protocol::SerializeRunScenarioInfo(request));
    }

    void WriteProgress(int progress) const {
        Write(run_protocol::progressFileName, run_protocol::SerializeProgress(L"id1", progress, L"Layer 3"));
    }

    void WriteResult(bool succeeded) const {
        Write(run_protocol::resultFileName,
              run_protocol::SerializeRunScenarioResult(
                  {L"id1", succeeded, {{0, L"Counted 3 files"}, {0, L"Drew 2 pictures"}}, {L"/out/part/a.png"}}));
    }

    TemporaryDirectory directory;
};

TEST_F(JobRowTest, AJobThatWaitsHasNoDirectories) {
    for (const JobStatus status : {JobStatus::Queued, JobStatus::Dequeued}) {
        const JobRow view = ViewOf(Job(status));
        EXPECT_EQ(view.outputFolder, L"");
        EXPECT_EQ(view.workDirectory, L"");
    }
}

TEST_F(JobRowTest, AJobHasItsDirectoriesFromItsStartOnHoweverItEnds) {
    WriteRequest();
    for (const JobStatus status :
         {JobStatus::Running, JobStatus::Canceling, JobStatus::Success, JobStatus::Failed, JobStatus::Canceled}) {
        const JobRow view = ViewOf(Job(status));
        EXPECT_EQ(view.outputFolder, L"/out/part") << JobStatusString(status);
        EXPECT_EQ(view.workDirectory, directory / L"work") << JobStatusString(status);
    }
}

TEST_F(JobRowTest, AJobThatEndedBeforeItsRunWasPreparedHasNoOutputDirectory) {
    for (const JobStatus status : {JobStatus::Running, JobStatus::Canceling, JobStatus::Failed, JobStatus::Canceled,
                                   static_cast<JobStatus>(7)}) {
        EXPECT_EQ(ViewOf(Job(status)).outputFolder, L"") << JobStatusString(status);
    }
}

TEST_F(JobRowTest, ARequestThatCannotBeReadNamesNoOutputDirectory) {
    Write(run_protocol::runInfoFileName, L"{\"version\":1,\"outputF");
    EXPECT_EQ(ViewOf(Job(JobStatus::Canceled)).outputFolder, L"");
}

TEST_F(JobRowTest, ASuccessIsBelievedWithoutAWorkDirectory) {
    EXPECT_EQ(ViewOf(Job(JobStatus::Success)).outputFolder, L"/out");
    EXPECT_EQ(ViewOf(Job(JobStatus::Success)).workDirectory, L"");
}

TEST_F(JobRowTest, ARunningJobSaysWhatItIsDoing) {
    WriteProgress(30);
    const JobRow view = ViewOf(Job(JobStatus::Running, 20));
    EXPECT_EQ(view.message, L"Layer 3");
    EXPECT_EQ(view.progress, 20);
    EXPECT_TRUE(view.messages.empty());
}

TEST_F(JobRowTest, AnEndedJobHasItsMessagesAndOutputFiles) {
    for (const bool succeeded : {true, false}) {
        WriteResult(succeeded);
        const JobRow view = ViewOf(Job(succeeded ? JobStatus::Success : JobStatus::Failed, 100));
        EXPECT_EQ(view.message, L"Counted 3 files");
        EXPECT_EQ(view.messages, (std::vector<std::wstring>{L"Counted 3 files", L"Drew 2 pictures"}));
        EXPECT_EQ(view.outputFiles, std::vector<std::wstring>{L"/out/part/a.png"});
    }
}

TEST_F(JobRowTest, AJobThatDidNotSucceedIsAsFarAsItsLastReport) {
    EXPECT_EQ(ViewOf(Job(JobStatus::Canceled, 100)).progress, 0);
    WriteProgress(30);
    EXPECT_EQ(ViewOf(Job(JobStatus::Canceled, 100)).progress, 30);
    EXPECT_EQ(ViewOf(Job(JobStatus::Failed, 100)).progress, 30);
    EXPECT_EQ(ViewOf(Job(JobStatus::Failed, 40)).progress, 40);
    EXPECT_EQ(ViewOf(Job(JobStatus::Success, 100)).progress, 100);
}

TEST_F(JobRowTest, ProgressIsAPercentage) {
    EXPECT_EQ(ViewOf(Job(JobStatus::Running, -5)).progress, 0);
    EXPECT_EQ(ViewOf(Job(JobStatus::Running, 250)).progress, 100);
    WriteProgress(250);
    EXPECT_EQ(ViewOf(Job(JobStatus::Canceled, 100)).progress, 100);
}

TEST_F(JobRowTest, ADeletedJobKeepsItsResultsAlone) {
    WriteRequest();
    WriteResult(true);
    JobModel board({Job(JobStatus::Success, 100)});
    JobStatusInfo deleted;
    deleted.id = L"id1";
    deleted.status = unlistedStatus;
    const JobRow* const view = board.Update(deleted);
    ASSERT_NE(view, nullptr);
    EXPECT_EQ(view->job.status, unlistedStatus);
    EXPECT_EQ(view->progress, 100);
    EXPECT_EQ(view->outputFolder, L"/out/part");
    EXPECT_EQ(view->workDirectory, L"");
}

TEST_F(JobRowTest, ABoardFindsItsJobsAndNoOthers) {
    const JobModel board({Job(JobStatus::Queued)});
    EXPECT_NE(board.Find(L"id1"), nullptr);
    EXPECT_EQ(board.Find(L"1"), nullptr);
    EXPECT_EQ(board.Ids(), std::vector<std::wstring>{L"id1"});
}

TEST_F(JobRowTest, ARenewedBoardTellsOfNewAndChangedJobsAlone) {
    JobListInfo changing = Job(JobStatus::Queued);
    JobListInfo staying = Job(JobStatus::Queued);
    staying.id = L"id2";
    JobModel board({changing, staying});
    changing.status = JobStatus::Running;
    JobListInfo added = Job(JobStatus::Queued);
    added.id = L"id3";
    EXPECT_EQ(board.Renew({added, staying, changing}), (std::vector<std::wstring>{L"id3", L"id1"}));
    EXPECT_EQ(board.Ids(), (std::vector<std::wstring>{L"id1", L"id2", L"id3"}));
    EXPECT_EQ(board.Find(L"id1")->job.status, JobStatus::Running);
}

TEST_F(JobRowTest, AReportOfAnUnknownJobChangesNothing) {
    JobModel board({Job(JobStatus::Queued)});
    JobStatusInfo report;
    report.id = L"id2";
    report.status = JobStatus::Running;
    EXPECT_EQ(board.Update(report), nullptr);
    EXPECT_EQ(board.Ids(), std::vector<std::wstring>{L"id1"});
}

TEST_F(JobRowTest, AJobRunsFromItsStartToItsEndOrNow) {
    JobListInfo job = Job(JobStatus::Running);
    EXPECT_EQ(front_end::SecondsOf(job, 1000), -1);
    job.startTime = L"1970-01-01T00:10:00Z";
    EXPECT_EQ(front_end::SecondsOf(job, 1000), 400);
    EXPECT_EQ(front_end::SecondsOf(job, 10), 0);
    job.status = JobStatus::Success;
    job.endTime = L"1970-01-01T00:10:07Z";
    EXPECT_EQ(front_end::SecondsOf(job, 1000), 7);
    job.endTime = L"1970-13-01T00:10:07Z";
    EXPECT_EQ(front_end::SecondsOf(job, 1000), 0);
}

} // namespace
