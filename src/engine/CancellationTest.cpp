#include "kit/engine/EngineFixture.h"

#include "kit/SystemHelpers.h"
#include "platform/files/Directory.h"
#include "platform/files/FileSystem.h"
#include "platform/files/RemoveTree.h"

#include <algorithm>
#include <thread>

namespace {

class CancellationTest : public EngineFixture {
protected:
    CancellationTest() { Start(); }

    /// Enqueues jobs and starts the first; the module then returns `answer` to every call.
    void StartFirstOf(int count, long answer) {
        EnqueueJobs(count);
        Execute();
        EXPECT_TRUE(platform::EnsureDirectory(Job(1).GetWorkDir()));
        script.calls.clear();
        script.answer = [answer](const test_modules::Call&, std::wstring&) { return answer; };
        companion.Forget();
    }

    /// Calls `CancelJobs` once without waiting, and returns its reports.
    std::vector<JobStatusInfo> Cancel(Lines ids) {
        std::vector<JobStatusInfo> cancelled;
        EXPECT_TRUE(engine->CancelJobs(ids, cancelled, false));
        return cancelled;
    }

    bool WasAskedToStop(std::int32_t seqId) { return platform::Exists(Job(seqId).GetWorkDir() + L"\\killprocess"); }
};

TEST_F(CancellationTest, QueuedAndFinishedJobGiveOneRecordAndOneWrite) {
    EnqueueJobs(2);
    Job(2).ChangeStatus(JobStatus::Success);
    companion.Forget();
    const std::vector<JobStatusInfo> cancelled = Cancel({Job(1).GetId(), Job(2).GetId()});
    EXPECT_EQ(cancelled, std::vector{Job(1).GetJobStatusInfo()});
    EXPECT_EQ(StatusOf(1), JobStatus::Dequeued);
    EXPECT_EQ(StatusOf(2), JobStatus::Success);
    EXPECT_EQ(companion.Events(), (Lines{L"info: Job: 1 is canceled.", L"write: " + companion.jobListFile}));
}

TEST_F(CancellationTest, DequeuedJobIsNeverStarted) {
    EnqueueJobs(2);
    Cancel({L"1"});
    Execute();
    EXPECT_EQ(StatusOf(1), JobStatus::Dequeued);
    EXPECT_EQ(StatusOf(2), JobStatus::Running);
}

TEST_F(CancellationTest, RunningJobWhoseModuleAcceptsIsListedTwice) {
    StartFirstOf(1, 0);
    const std::vector<JobStatusInfo> cancelled = Cancel({L"1"});
    EXPECT_EQ(cancelled, std::vector(2, Job(1).GetJobStatusInfo()));
    EXPECT_EQ(StatusOf(1), JobStatus::Canceling);
    EXPECT_TRUE(WasAskedToStop(1));
    EXPECT_EQ(companion.Events(), (Lines{L"debug: Job: 1 is Canceling", L"debug: Create killprocess for Job: 1",
                                         L"write: " + companion.jobListFile}));
}

TEST_F(CancellationTest, RunningJobWhoseModuleRefusesIsListedOnce) {
    StartFirstOf(1, -1);
    const std::vector<JobStatusInfo> cancelled = Cancel({L"1"});
    EXPECT_EQ(cancelled, std::vector{Job(1).GetJobStatusInfo()});
    EXPECT_EQ(StatusOf(1), JobStatus::Canceling);
    EXPECT_TRUE(WasAskedToStop(1));
}

TEST_F(CancellationTest, ModuleIsCalledWithTheJobsIdAndNoCallback) {
    StartFirstOf(1, 0);
    Cancel({L"1"});
    ASSERT_EQ(script.calls.size(), 1U);
    EXPECT_EQ(script.calls[0].function, "CancelScenario");
    EXPECT_EQ(script.calls[0].input, Job(1).GetId());
    EXPECT_EQ(script.calls[0].callback, nullptr);
}

TEST_F(CancellationTest, ModuleThatThrowsHasRefusedAndIsLogged) {
    StartFirstOf(1, 0);
    script.answer = [](const test_modules::Call&, std::wstring&) -> long { throw std::runtime_error("no licence"); };
    EXPECT_EQ(Cancel({L"1"}).size(), 1U);
    EXPECT_EQ(companion.Events(L"error: "), Lines{L"The function module threw while it cancelled Job: 1: no licence"});
}

TEST_F(CancellationTest, KillprocessThatCannotBeMadeIsNotReported) {
    StartFirstOf(1, -1);
    ASSERT_TRUE(platform::RemoveTree(Job(1).GetWorkDir()));
    EXPECT_EQ(Cancel({L"1"}).size(), 1U);
    EXPECT_EQ(companion.Events(L"error: "), Lines());
}

/// Requests the stop of a job with this work directory.
void RequestStop(const std::wstring& workDir) {
    JobListInfo record{};
    record.workDir = workDir;
    EXPECT_TRUE(JobEntry(record).OnCancelJob());
}

TEST_F(CancellationTest, KillprocessStandsWhereTheWorkDirectorySaysSeenFromTheCurrentDirectory) {
    ASSERT_TRUE(platform::EnsureDirectory(directory / L"current"));
    ASSERT_TRUE(platform::EnsureDirectory(directory / L"beside"));
    const ScopedCurrentDirectory current(directory / L"current");
    RequestStop(L"");
    EXPECT_TRUE(platform::Exists(directory / L"current\\killprocess"));
    RequestStop(L"..\\beside");
    EXPECT_TRUE(platform::Exists(directory / L"beside\\killprocess"));
    RequestStop(directory / L"current\\..");
    EXPECT_TRUE(platform::Exists(directory / L"killprocess"));
}

TEST_F(CancellationTest, KillprocessThatIsThereIsEmptied) {
    Write(L"killprocess", "content");
    RequestStop(directory.Path() + L"\\");
    EXPECT_EQ(ReadTextFile(directory / L"killprocess"), "");
}

/// A job that does not ask its process to stop.
class UnwillingJob : public JobEntry {
public:
    using JobEntry::JobEntry;
    bool OnCancelJob() override { return false; }
};

/// Adds a running `UnwillingJob`; the module returns `answer` to every call.
std::shared_ptr<JobEntry> AddUnwillingJob(OpenEngine& engine, test_modules::Script& script, long answer) {
    JobListInfo record{};
    record.id = L"unwilling";
    record.seqId = 9;
    record.status = JobStatus::Running;
    script.answer = [answer](const test_modules::Call&, std::wstring&) { return answer; };
    return engine.jobList.emplace_back(std::make_shared<UnwillingJob>(record));
}

TEST_F(CancellationTest, JobThatDoesNotAskItsProcessIsReportedOnceForItsModule) {
    const auto job = AddUnwillingJob(*engine, script, 0);
    const std::vector<JobStatusInfo> cancelled = Cancel({L"9"});
    EXPECT_EQ(cancelled, std::vector{job->GetJobStatusInfo()});
    EXPECT_EQ(job->GetStatus(), JobStatus::Canceling);
    EXPECT_EQ(JobListWriteCount(), 1U);
}

TEST_F(CancellationTest, JobThatNobodyAskedIsCancelingAndNeitherReportedNorWrittenNorWaitedFor) {
    const auto job = AddUnwillingJob(*engine, script, -1);
    Lines ids{L"9"};
    std::vector<JobStatusInfo> cancelled;
    EXPECT_TRUE(engine->CancelJobs(ids, cancelled, true));
    EXPECT_TRUE(cancelled.empty());
    EXPECT_EQ(job->GetStatus(), JobStatus::Canceling);
    EXPECT_EQ(JobListWriteCount(), 0U);
}

TEST_F(CancellationTest, CancelingJobIsPassedOver) {
    StartFirstOf(1, 0);
    Cancel({L"1"});
    companion.Forget();
    EXPECT_TRUE(Cancel({L"1"}).empty());
    EXPECT_EQ(companion.Events(), Lines());
}

TEST_F(CancellationTest, UnknownAndRepeatedNamesAreIgnored) {
    EnqueueJobs(1);
    EXPECT_EQ(Cancel({L"1", L"1", L"99", L""}).size(), 1U);
    EXPECT_EQ(companion.Events(L"error: "), Lines());
}

TEST_F(CancellationTest, NumberNamesTheJobUnlessAnEarlierOneHasItAsItsId) {
    EnqueueJobs(1);
    JobListInfo seven = SavedJob(8, JobStatus::Queued);
    seven.id = L"7";
    engine->jobList.push_back(std::make_shared<JobEntry>(seven));
    JobListInfo other = SavedJob(7, JobStatus::Queued);
    engine->jobList.push_back(std::make_shared<JobEntry>(other));
    Cancel({L"7"});
    EXPECT_EQ(StatusOf(8), JobStatus::Dequeued);
    EXPECT_EQ(StatusOf(7), JobStatus::Queued);
}

TEST_F(CancellationTest, NothingRequestedWritesNothingAndIsTrue) {
    EnqueueJobs(1);
    EXPECT_TRUE(Cancel({}).empty());
    EXPECT_EQ(JobListWriteCount(), 0U);
}

TEST_F(CancellationTest, RecordsFromBeforeAreKeptAndTheListIsWritten) {
    EnqueueJobs(1);
    Lines ids;
    std::vector<JobStatusInfo> cancelled(1);
    EXPECT_TRUE(engine->CancelJobs(ids, cancelled, false));
    EXPECT_EQ(cancelled.size(), 1U);
    EXPECT_EQ(JobListWriteCount(), 1U);
}

TEST_F(CancellationTest, WaitingLastsUntilAnotherThreadSeesTheProcessEnd) {
    StartFirstOf(1, 0);
    std::vector<JobStatusInfo> cancelled;
    std::thread waiter([&] {
        Lines ids{L"1"};
        engine->CancelJobs(ids, cancelled, true);
    });
    std::vector<JobStatusInfo> changed;
    while (changed.empty()) {
        Lines all{L"1"};
        std::vector<JobStatusInfo> statuses;
        engine->CheckJobStatus(all, statuses);
        if (statuses.front().status == JobStatus::Canceling && processes.begin()->second.IsRunning()) {
            FinishProcess(1);
        }
        engine->CheckUpdate(changed);
    }
    waiter.join();
    EXPECT_EQ(cancelled.front().status, JobStatus::Canceling);
    EXPECT_EQ(companion.JobListWrites().back().front().status, JobStatus::Canceled);
}

TEST_F(CancellationTest, WaitingForQueuedJobsReturnsAtOnce) {
    EnqueueJobs(1);
    Lines ids{L"1"};
    std::vector<JobStatusInfo> cancelled;
    EXPECT_TRUE(engine->CancelJobs(ids, cancelled, true));
    EXPECT_EQ(cancelled.size(), 1U);
}

TEST_F(CancellationTest, CancelAllJobsCancelsEveryJobInTheList) {
    StartFirstOf(3, -1);
    std::vector<JobStatusInfo> cancelled;
    EXPECT_TRUE(engine->CancelAllJobs(cancelled, false));
    EXPECT_EQ(companion.Events().front(), L"debug: Cancel all jobs");
    EXPECT_EQ(StatusOf(1), JobStatus::Canceling);
    EXPECT_EQ(StatusOf(2), JobStatus::Dequeued);
    EXPECT_EQ(StatusOf(3), JobStatus::Dequeued);
    EXPECT_EQ(JobListWriteCount(), 1U);
}

TEST_F(CancellationTest, TerminateCallsTheModuleAndTouchesNoJob) {
    StartFirstOf(2, 0);
    engine->Terminate();
    ASSERT_EQ(script.calls.size(), 1U);
    EXPECT_EQ(script.calls[0].function, "Terminate");
    EXPECT_EQ(script.calls[0].input, L"");
    EXPECT_EQ(StatusOf(1), JobStatus::Running);
    EXPECT_EQ(companion.Events(), Lines());
}

} // namespace
