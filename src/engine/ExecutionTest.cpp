#include "kit/engine/EngineFixture.h"

namespace {

class ExecutionTest : public EngineFixture {
protected:
    ExecutionTest() { Start(); }

    void MakeModuleAnswer(long answer) {
        script.answer = [answer](const test_modules::Call&, std::wstring&) { return answer; };
    }
};

long SomeCallback(const std::wstring&, const std::wstring&) {
    return 0;
}

TEST_F(ExecutionTest, EmptyJobListIsNothingToDoAndWritesNoFile) {
    std::vector<JobStatusInfo> updated;
    EXPECT_FALSE(engine->ExecuteJob(nullptr, updated));
    EXPECT_TRUE(updated.empty());
    EXPECT_EQ(JobListWriteCount(), 0U);
}

TEST_F(ExecutionTest, QueuedJobIsStartedStepByStep) {
    EnqueueJobs(1);
    const std::wstring id = Job(1).GetId();
    const std::vector<JobStatusInfo> updated = Execute();
    EXPECT_EQ(updated, std::vector{Job(1).GetJobStatusInfo()});
    EXPECT_EQ(StatusOf(1), JobStatus::Running);
    EXPECT_EQ(Job(1).GetJobListInfo().startTime.size(), 20U);
    EXPECT_EQ(Job(1).GetJobListInfo().endTime, L"");
    EXPECT_EQ(Job(1).GetProcessHandle(), processes.at(id).Handle());
    EXPECT_EQ(companion.Events(), (Lines{L"debug: Job: 1 is Running", L"debug: Job: 1 is running as JobID: " + id,
                                         L"write: " + companion.jobListFile}));
}

TEST_F(ExecutionTest, ModuleGetsTheRunRequestAndTheCallback) {
    EnqueueJobs(1);
    std::vector<JobStatusInfo> updated;
    EXPECT_TRUE(engine->ExecuteJob(SomeCallback, updated));
    const JobListInfo& info = Job(1).GetJobListInfo();
    ASSERT_EQ(script.calls.size(), 1U);
    EXPECT_EQ(script.calls[0].function, "RunScenario");
    EXPECT_EQ(script.calls[0].input, L"run request of " + info.id);
    EXPECT_EQ(script.calls[0].callback, SomeCallback);
    const RecordingCompanion::RunRequest expected{info.id,      scenarioFile, info.inputFiles, directory / L"out\\a",
                                                  info.workDir, L""};
    EXPECT_EQ(companion.RunRequests(), std::vector{expected});
}

TEST_F(ExecutionTest, RunningJobAtTheCursorHoldsTheNextOneBack) {
    EnqueueJobs(2);
    Execute();
    companion.Forget();
    std::vector<JobStatusInfo> updated;
    EXPECT_FALSE(engine->ExecuteJob(nullptr, updated));
    EXPECT_TRUE(updated.empty());
    EXPECT_EQ(StatusOf(2), JobStatus::Queued);
    EXPECT_EQ(NumberAtCursor(), 1);
    EXPECT_EQ(companion.Events(), Lines());
}

TEST_F(ExecutionTest, CancelingJobAtTheCursorHoldsTheNextOneBack) {
    EnqueueJobs(2);
    Execute();
    Job(1).ChangeStatus(JobStatus::Canceling);
    std::vector<JobStatusInfo> updated;
    EXPECT_FALSE(engine->ExecuteJob(nullptr, updated));
}

TEST_F(ExecutionTest, OneCallPassesAFinishedJobAndStartsTheNext) {
    EnqueueJobs(3);
    Execute();
    Job(1).ChangeStatus(JobStatus::Success);
    const std::vector<JobStatusInfo> updated = Execute();
    EXPECT_EQ(updated, std::vector{Job(2).GetJobStatusInfo()});
    EXPECT_EQ(StatusOf(2), JobStatus::Running);
    EXPECT_EQ(StatusOf(3), JobStatus::Queued);
    EXPECT_EQ(NumberAtCursor(), 2);
}

TEST_F(ExecutionTest, JobsThatAreNotQueuedArePassedOver) {
    EnqueueJobs(4);
    Job(1).ChangeStatus(JobStatus::Dequeued);
    Job(2).ChangeStatus(JobStatus::Canceled);
    Execute();
    EXPECT_EQ(StatusOf(3), JobStatus::Running);
    EXPECT_EQ(StatusOf(1), JobStatus::Dequeued);
    EXPECT_EQ(NumberAtCursor(), 3);
}

TEST_F(ExecutionTest, ModuleThatFailsEveryCallFailsAllJobsInOneCall) {
    MakeModuleAnswer(1);
    EnqueueJobs(2);
    std::vector<JobStatusInfo> updated;
    EXPECT_TRUE(engine->ExecuteJob(nullptr, updated));
    EXPECT_EQ(updated, (std::vector{Job(1).GetJobStatusInfo(), Job(2).GetJobStatusInfo()}));
    EXPECT_EQ(StatusOf(1), JobStatus::Failed);
    EXPECT_EQ(StatusOf(2), JobStatus::Failed);
    EXPECT_EQ(NumberAtCursor(), 0);
    EXPECT_EQ(JobListWriteCount(), 1U);
}

TEST_F(ExecutionTest, FailedStartKeepsItsStartAndEndTimesAndNeedsNoFurtherLine) {
    MakeModuleAnswer(1);
    EnqueueJobs(1);
    const std::wstring id = Job(1).GetId();
    Execute();
    EXPECT_EQ(Job(1).GetJobListInfo().startTime.size(), 20U);
    EXPECT_EQ(Job(1).GetJobListInfo().endTime.size(), 20U);
    EXPECT_EQ(companion.Events(), (Lines{L"debug: Job: 1 is Running", L"debug: Job: 1 is running as JobID: " + id,
                                         L"info: Job: 1 is failed.", L"write: " + companion.jobListFile}));
}

TEST_F(ExecutionTest, FunctionThatNoModuleServesFailsTheJob) {
    const FunctionManager nothing({});
    engine = std::make_unique<OpenEngine>(&nothing);
    EnqueueJobs(1);
    Execute();
    EXPECT_EQ(StatusOf(1), JobStatus::Failed);
    engine.reset();
}

TEST_F(ExecutionTest, OutputDirectoryThatCannotBeMadeFailsTheJobBeforeTheModuleIsCalled) {
    Write(L"out", "a file in the folder's place");
    EnqueueJobs(1);
    Execute();
    EXPECT_EQ(StatusOf(1), JobStatus::Failed);
    EXPECT_TRUE(script.calls.empty());
    EXPECT_EQ(companion.Events(),
              (Lines{L"debug: Job: 1 is Running",
                     L"error: Failed to create directory: " + directory.Path() + L"\\out\\a for Job: 1",
                     L"info: Job: 1 is failed.", L"write: " + companion.jobListFile}));
}

TEST_F(ExecutionTest, RunRequestThatCannotBeBuiltFailsTheJobBeforeTheModuleIsCalled) {
    companion.canBuildRunRequests = false;
    EnqueueJobs(1);
    Execute();
    EXPECT_TRUE(script.calls.empty());
    EXPECT_EQ(companion.Events(), (Lines{L"debug: Job: 1 is Running", L"error: Failed to create request json of Job: 1",
                                         L"info: Job: 1 is failed.", L"write: " + companion.jobListFile}));
}

TEST_F(ExecutionTest, AnswerWithoutAHandleLeavesTheJobRunningWithoutOne) {
    MakeModuleAnswer(0);
    EnqueueJobs(1);
    EXPECT_EQ(Execute().size(), 1U);
    EXPECT_EQ(StatusOf(1), JobStatus::Running);
    EXPECT_EQ(Job(1).GetProcessHandle(), nullptr);
    EXPECT_EQ(NumberAtCursor(), 1);
}

TEST_F(ExecutionTest, AfterAFailedStartTheSameCallStartsTheNextJob) {
    EnqueueJobs(2);
    const auto answer = script.answer;
    script.answer = [this, answer](const test_modules::Call& call, std::wstring& output) {
        return script.calls.size() == 1 ? 7L : answer(call, output);
    };
    EXPECT_EQ(Execute().size(), 2U);
    EXPECT_EQ(StatusOf(1), JobStatus::Failed);
    EXPECT_EQ(StatusOf(2), JobStatus::Running);
    EXPECT_EQ(JobListWriteCount(), 1U);
}

TEST_F(ExecutionTest, ReportsAreAppendedToWhatTheCallerHas) {
    EnqueueJobs(1);
    std::vector<JobStatusInfo> updated(1);
    EXPECT_TRUE(engine->ExecuteJob(nullptr, updated));
    ASSERT_EQ(updated.size(), 2U);
    EXPECT_EQ(updated[0], JobStatusInfo());
}

TEST_F(ExecutionTest, ModuleThatThrowsFailsTheJobAndSaysWhy) {
    const FunctionManager throwing({test_modules::ModulePath(L"throwing_module")});
    engine = std::make_unique<OpenEngine>(&throwing);
    EnqueueJobs(1);
    EXPECT_NO_THROW(Execute());
    EXPECT_EQ(StatusOf(1), JobStatus::Failed);
    EXPECT_EQ(companion.Events(L"error: "), Lines{L"The function module threw while it started Job: 1: no licence"});
    engine.reset();
}

/// Suspends every job.
class HoldingEngine : public OpenEngine {
public:
    using OpenEngine::OpenEngine;

protected:
    bool IsSuspendJobExecution() override { return true; }
};

TEST_F(ExecutionTest, DerivedEngineMayHoldExecutionBack) {
    engine = std::make_unique<HoldingEngine>(&functions);
    EnqueueJobs(1);
    EXPECT_EQ(Execute(), std::vector<JobStatusInfo>());
    EXPECT_EQ(StatusOf(1), JobStatus::Queued);
}

/// Counts how often it was asked whether to suspend execution.
class AskedEngine : public OpenEngine {
public:
    using OpenEngine::OpenEngine;
    int questions = 0;

protected:
    bool IsSuspendJobExecution() override {
        ++questions;
        return JobEntryManagerBase::IsSuspendJobExecution();
    }
};

TEST_F(ExecutionTest, SuspensionIsAskedForOnceInACallThatLooksAtSeveralJobs) {
    auto asked = std::make_unique<AskedEngine>(&functions);
    const AskedEngine& counted = *asked;
    engine = std::move(asked);
    MakeModuleAnswer(1);
    EnqueueJobs(3);
    EXPECT_EQ(Execute().size(), 3U);
    EXPECT_EQ(counted.questions, 1);
}

TEST_F(ExecutionTest, SuspensionIsNotAskedForAtAnEmptyQueue) {
    engine = std::make_unique<HoldingEngine>(&functions);
    EXPECT_EQ(Execute(), std::vector<JobStatusInfo>());
}

TEST_F(ExecutionTest, DuringAModuleCallOthersWaitAndOnlyWhatTakesNoLockCanBeCalled) {
    EnqueueJobs(2);
    std::vector<JobListInfo> seen;
    bool isFree = true;
    script.answer = [&](const test_modules::Call& call, std::wstring&) {
        if (call.function == "RunScenario") {
            isFree = IsEngineFree();
            EXPECT_TRUE(engine->GetJobList(seen));
            engine->Terminate();
        }
        return 0L;
    };
    Execute();
    EXPECT_FALSE(isFree);
    EXPECT_TRUE(IsEngineFree());
    ASSERT_EQ(seen.size(), 2U);
    EXPECT_EQ(seen[0].status, JobStatus::Running);
    EXPECT_EQ(seen[1].status, JobStatus::Queued);
    ASSERT_EQ(script.calls.size(), 2U);
    EXPECT_EQ(script.calls[1].function, "Terminate");
}

TEST_F(ExecutionTest, CursorStaysOnTheLastJobUntilOneMoreCall) {
    EnqueueJobs(1);
    Execute();
    FinishProcess(1);
    Poll();
    EXPECT_FALSE(engine->IsCompleted());
    std::vector<JobStatusInfo> updated;
    EXPECT_TRUE(engine->ExecuteJob(nullptr, updated));
    EXPECT_TRUE(updated.empty());
    EXPECT_TRUE(engine->IsCompleted());
}

} // namespace
