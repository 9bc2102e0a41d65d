#include "controller_host/HostEngine.h"

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "controller_host/DeletionJournal.h"
#include "kit/SystemHelpers.h"
#include "kit/controller_host/HostFixture.h"
#include "platform/files/Directory.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "services/Settings.h"

namespace {

/// Engines created in succession over one job list, like hosts that end and start.
class HostEngineTest : public HostFixture {
protected:
    JobListInfo Row(std::int32_t seqId, JobStatus status) const {
        JobListInfo row{};
        row.id = L"a" + std::to_wstring(seqId);
        row.seqId = seqId;
        row.status = status;
        row.workDir = directory / (L"work\\" + row.id);
        return row;
    }

    void Save(const std::vector<JobListInfo>& rows) const {
        ASSERT_TRUE(ControllerCSWrapper::CreateJsonFile(ControllerCSWrapper::Serialize(L"JobList", rows),
                                                        ControllerCSWrapper::GetJobListFile()));
    }

    void Restart() { engine = std::make_unique<HostEngine>(functions.get()); }

    std::vector<JobListInfo> Jobs() const {
        std::vector<JobListInfo> jobs;
        engine->GetJobList(jobs);
        return jobs;
    }

    std::vector<JobStatus> Statuses() const {
        std::vector<JobStatus> statuses;
        for (const JobListInfo& job : Jobs()) {
            statuses.push_back(job.status);
        }
        return statuses;
    }

    void DeleteJobsOlderThanOneDay() const {
        WriteTextFile(directory / L"settings.json",
                      R"({"version":1,"workDirectory":"work","jobListFile":"job_list.json",)"
                      R"("logFile":"","autoDeleteWorkFolder":{"enabled":true,"days":1}})");
    }

    DeletionJournal notes{directory / L"job_list.json"};
};

TEST_F(HostEngineTest, TheJournalOfAKilledHostIsFoldedByTheNextOne) {
    const std::wstring journal = job_list_journal::PathOf(directory / L"job_list.json");
    const std::vector rows = {Row(1, JobStatus::Success)};
    auto row = rows.begin();
    ASSERT_TRUE(job_list_file::WriteRows(
        directory / L"job_list.json", 1, [&]() -> const JobListInfo* { return row == rows.end() ? nullptr : &*row++; },
        L"one"));
    job_list_journal::Journal killed;
    EXPECT_TRUE(killed.Begin(journal, L"one"));
    const JobListInfo second = Row(2, JobStatus::Success);
    EXPECT_TRUE(killed.Append({&second}, {}));
    killed.Close();

    Restart();
    EXPECT_EQ(Jobs().size(), 2U);
    EXPECT_TRUE(engine->HasChanges());
    engine->EndJournal();
    EXPECT_FALSE(platform::Exists(journal));
    EXPECT_EQ(ReadTextFile(directory / L"job_list.json").rfind(R"({"JobList":[{)", 0), 0U);
}

TEST_F(HostEngineTest, ADequeuedJobStaysSoWhateverHostsStart) {
    Save({Row(1, JobStatus::Dequeued), Row(2, JobStatus::Queued), Row(3, JobStatus::Running),
          Row(4, JobStatus::Canceling), Row(5, JobStatus::Success)});
    const std::vector<JobStatus> expected{JobStatus::Dequeued, JobStatus::Canceled, JobStatus::Canceled,
                                          JobStatus::Canceled, JobStatus::Success};
    Restart();
    EXPECT_EQ(Statuses(), expected);
    std::vector<std::wstring> ids{L"5"};
    std::vector<std::wstring> deleted;
    engine->DeleteJobsDurably(ids, deleted); // writes the list
    Restart();
    EXPECT_EQ(Statuses(), std::vector(expected.begin(), expected.end() - 1));
}

TEST_F(HostEngineTest, ADequeuedJobIsNotStarted) {
    Save({Row(1, JobStatus::Dequeued)});
    Restart();
    std::vector<JobStatusInfo> updated;
    engine->ExecuteJob(nullptr, updated);
    EXPECT_TRUE(updated.empty());
    EXPECT_TRUE(engine->IsCompleted());
}

TEST_F(HostEngineTest, OldJobsAreDeletedWithTheirWorkDirectoriesAndLeaveNoNote) {
    Save({Row(1, JobStatus::Success), Row(2, JobStatus::Failed)});
    WriteTextFile(Row(1, JobStatus::Success).workDir + L"\\scenario.log", "some words");
    DeleteJobsOlderThanOneDay();
    Restart();
    EXPECT_EQ(Jobs().size(), 2U); // not deleted before the host asks for it
    engine->DeleteOldJobsDurably();
    EXPECT_TRUE(Jobs().empty());
    EXPECT_FALSE(platform::Exists(Row(1, JobStatus::Success).workDir));
    EXPECT_TRUE(notes.Read().empty());
}

TEST_F(HostEngineTest, ADeletionForAgeIsNotedUntilNothingIsLeftOfTheJob) {
    const JobListInfo row = Row(1, JobStatus::Success);
    Save({row});
    WriteTextFile(row.workDir, "no folder, so it is not touched");
    DeleteJobsOlderThanOneDay();
    Restart();
    engine->DeleteOldJobsDurably();
    EXPECT_TRUE(Jobs().empty());
    ASSERT_EQ(notes.Read().size(), 1U);
    EXPECT_EQ(notes.Read().front().id, row.id);
    ASSERT_TRUE(platform::RemoveFile(row.workDir));
    WriteTextFile(row.workDir + L"\\scenario.log", "some words");
    Restart();
    engine->FinishDeletions();
    EXPECT_FALSE(platform::Exists(row.workDir));
    EXPECT_TRUE(notes.Read().empty());
}

TEST_F(HostEngineTest, WithoutAutomaticDeletionOldJobsStay) {
    Save({Row(1, JobStatus::Success)});
    Restart();
    engine->DeleteOldJobsDurably();
    EXPECT_EQ(Jobs().size(), 1U);
}

/// Cancels the only job, which runs with its own work directory or with a link in its place.
class HostEngineTest_Cancel : public HostEngineTest {
protected:
    HostEngineTest_Cancel() {
        // Jobs of the host's own class take no scripted process and run without one.
        Restart();
        answers = std::make_unique<RequestHandler>(*engine, transmitter);
    }

    std::wstring StartJob() {
        answers->Answer({7, L"EnqueueJobs", EnqueueRequest(1)});
        std::vector<JobStatusInfo> updated;
        engine->ExecuteJob(nullptr, updated);
        return Jobs().front().workDir;
    }

    void Cancel() {
        std::vector<JobStatusInfo> cancelled;
        engine->CancelAllJobs(cancelled, false);
        EXPECT_EQ(Statuses(), std::vector{JobStatus::Canceling});
    }
};

TEST_F(HostEngineTest_Cancel, ARunningJobIsAskedThroughItsWorkDirectory) {
    const std::wstring workDir = StartJob();
    ASSERT_TRUE(platform::EnsureDirectory(workDir));
    Cancel();
    EXPECT_TRUE(platform::Exists(workDir + L"\\killprocess"));
}

TEST_F(HostEngineTest_Cancel, NothingIsMadeWhereALinkInThePlaceOfTheWorkDirectoryLeads) {
    const std::wstring workDir = StartJob();
    ASSERT_TRUE(platform::EnsureDirectory(directory / L"elsewhere"));
    ASSERT_TRUE(platform::EnsureDirectory(platform::ParentDirectory(workDir)));
    if (!MakeLink(directory / L"elsewhere", workDir)) {
        GTEST_SKIP() << "no links here";
    }
    Cancel();
    EXPECT_FALSE(platform::Exists(directory / L"elsewhere\\killprocess"));
}

} // namespace
