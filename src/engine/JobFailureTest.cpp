#include "kit/engine/EngineFixture.h"

#include "platform/files/NativePath.h"
#include "text/Text.h"

#include <stdexcept>

/// The reason of a failure, as the engine's entry returns it.
namespace {

class JobFailureTest : public EngineFixture {
protected:
    JobFailureTest() { Start(); }

    void MakeModuleAnswer(long result, const std::wstring& words) {
        script.answer = [=](const test_modules::Call&, std::wstring& output) {
            output = words;
            return result;
        };
    }

    /// Starts a job that the module accepts, and ends its process.
    std::wstring FailureOfAnEndedJob() {
        EnqueueJobs(1);
        Execute();
        FinishProcess(1);
        Poll();
        EXPECT_EQ(StatusOf(1), JobStatus::Failed);
        return Job(1).GetFailure();
    }

    std::wstring FailureOfAStart() {
        EnqueueJobs(1);
        Execute();
        EXPECT_EQ(StatusOf(1), JobStatus::Failed);
        return Job(1).GetFailure();
    }

    static bool Holds(const std::wstring& text, const std::wstring& part) {
        EXPECT_NE(text.find(part), std::wstring::npos) << text::ToUtf8(text);
        return text.find(part) != std::wstring::npos;
    }
};

TEST_F(JobFailureTest, AnOutputDirectoryThatCannotBeMadeIsNamedWithTheSystemsWord) {
    Write(L"out", "a file in the folder's place");
    const std::wstring reason = FailureOfAStart();
    const std::wstring start =
        L"The output directory " + platform::ToNativeText(directory / L"out\\a") + L" cannot be made: ";
    EXPECT_TRUE(reason.starts_with(start) && reason.size() > start.size() + 1) << text::ToUtf8(reason);
}

TEST_F(JobFailureTest, AModulesOwnWordsArePassedOn) {
    MakeModuleAnswer(5, L"no licence is free");
    EXPECT_EQ(FailureOfAStart(), L"The function module did not start the job (result 5): no licence is free");
}

TEST_F(JobFailureTest, AModuleWithoutWordsIsNamedWithItsResult) {
    MakeModuleAnswer(5, L"");
    EXPECT_EQ(FailureOfAStart(), L"The function module did not start the job (result 5).");
}

TEST_F(JobFailureTest, AModuleThatSaysTooMuchIsCutShort) {
    MakeModuleAnswer(5, std::wstring(1000000, L'x'));
    EXPECT_LT(FailureOfAStart().size(), 2100U);
}

TEST_F(JobFailureTest, WhatAModuleThrowsIsPassedOn) {
    script.answer = [](const test_modules::Call&, std::wstring&) -> long { throw std::runtime_error("out of paper"); };
    Holds(FailureOfAStart(), L"The function module threw while it started Job: 1: out of paper");
}

TEST_F(JobFailureTest, AFunctionThatNoModuleOffersIsNamed) {
    const FunctionManager nothing({});
    engine = std::make_unique<OpenEngine>(&nothing);
    EXPECT_EQ(FailureOfAStart(), L"No function module offers \"RunScenario\".");
    engine.reset();
}

TEST_F(JobFailureTest, ARunRequestThatCannotBeBuiltIsNamed) {
    companion.canBuildRunRequests = false;
    EXPECT_EQ(FailureOfAStart(), L"The run request of the job cannot be built.");
}

TEST_F(JobFailureTest, AnAnswerWithoutAProcessIsNamed) {
    MakeModuleAnswer(0, L"started");
    EnqueueJobs(1);
    Execute();
    Poll();
    ASSERT_EQ(StatusOf(1), JobStatus::Failed);
    EXPECT_EQ(Job(1).GetFailure(), L"The answer of the function module names no process that can be watched: started");
}

TEST_F(JobFailureTest, AProcessThatLeavesNoResultIsTold) {
    EnqueueJobs(1);
    const std::wstring workDir = Job(1).GetWorkDir();
    Write(workDir.substr(directory.Path().size() + 1) + L"\\scenario.log", "");
    Execute();
    FinishProcess(1);
    Poll();
    Holds(Job(1).GetFailure(), L"The job's process ended, and it left no result: ");
    Holds(Job(1).GetFailure(), platform::ToNativeText(workDir + L"\\run_scenario_result.json"));
}

TEST_F(JobFailureTest, AWorkDirectoryThatIsGoneIsTold) {
    const std::wstring reason = FailureOfAnEndedJob();
    Holds(reason, L"its work directory is gone: " + platform::ToNativeText(Job(1).GetWorkDir()));
}

TEST_F(JobFailureTest, AResultThatSaysWhySpeaksForItself) {
    EnqueueJobs(1);
    Execute();
    companion.resultFiles[Job(1).GetWorkDir() + L"\\run_scenario_result.json"] = {L"", false, {{1, L"not closed"}}};
    FinishProcess(1);
    Poll();
    ASSERT_EQ(StatusOf(1), JobStatus::Failed);
    EXPECT_EQ(Job(1).GetFailure(), L"");
}

TEST_F(JobFailureTest, AResultThatDoesNotSayWhyIsTold) {
    EnqueueJobs(1);
    Execute();
    companion.resultFiles[Job(1).GetWorkDir() + L"\\run_scenario_result.json"] = {L"", false, {}};
    FinishProcess(1);
    Poll();
    EXPECT_EQ(Job(1).GetFailure(), L"The scenario reported a failure without saying why.");
}

TEST_F(JobFailureTest, AJobThatSucceedsHasNone) {
    EnqueueJobs(1);
    Execute();
    ReportResult(1, true);
    FinishProcess(1);
    Poll();
    ASSERT_EQ(StatusOf(1), JobStatus::Success);
    EXPECT_EQ(Job(1).GetFailure(), L"");
}

} // namespace
