#include "kit/controller_host/HostFixture.h"

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "controller_host/FailureReasons.h"
#include "formats/RunProtocol.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "text/Text.h"

/// Where users find the reason of a failed job.
namespace {

class FailureReasonsTest : public HostFixture {
protected:
    /// The first message of a result; empty if there is none.
    static std::wstring ReasonIn(const std::wstring& path) {
        bool succeeded = true;
        std::vector<std::pair<int, std::wstring>> messages;
        std::vector<std::wstring> outputFiles;
        if (!platform::Exists(path) ||
            !ControllerCSWrapper::ParseRunScenarioResult(path, succeeded, messages, outputFiles)) {
            return {};
        }
        EXPECT_FALSE(succeeded);
        return messages.empty() ? std::wstring() : messages.front().second;
    }
    static std::wstring ReasonInResult(const JobStatusInfo& job) {
        return ReasonIn(job.workDir + L"\\run_scenario_result.json");
    }
    std::wstring NoteOf(const std::wstring& id) const {
        return run_protocol::FailureNotePath(directory / L"job_list.json", id);
    }

    void RefuseJobs() {
        script.answer = [](const test_modules::Call&, std::wstring& output) {
            output = L"no licence is free";
            return 5L;
        };
    }
    JobStatusInfo FailedJob() {
        StartLoop();
        Enqueue(1);
        return WaitForStatus(JobStatus::Failed);
    }
};

const std::wstring noLicence = L"The function module did not start the job (result 5): no licence is free";

TEST_F(FailureReasonsTest, AJobThatCannotBeStartedHasTheReasonInItsResult) {
    RefuseJobs();
    const JobStatusInfo job = FailedJob();
    EXPECT_EQ(ReasonInResult(job), noLicence);
    EXPECT_FALSE(platform::Exists(NoteOf(job.id)));
}

TEST_F(FailureReasonsTest, AnOutputDirectoryThatCannotBeMadeIsNamedInTheResult) {
    WriteTextFile(directory / L"output", "a file in the folder's place");
    const std::wstring reason = ReasonInResult(FailedJob());
    EXPECT_NE(reason.find(platform::ToNativeText(directory / L"output\\part") + L" cannot be made: "),
              std::wstring::npos)
        << text::ToUtf8(reason);
}

TEST_F(FailureReasonsTest, WithoutAWorkDirectoryItStandsBesideTheJobListUntilTheJobIsDeleted) {
    RefuseJobs();
    WriteTextFile(directory / L"work", "a file in the folder's place");
    const JobStatusInfo job = FailedJob();
    EXPECT_EQ(ReasonIn(NoteOf(job.id)), noLicence);
    EXPECT_TRUE(line.Deliver(1, L"DeleteJobsRequest", Ids(L"DeleteJobsRequest", {job.id})));
    line.WaitFor(L"DeleteJobsResponse");
    EXPECT_FALSE(platform::Exists(NoteOf(job.id)));
}

TEST_F(FailureReasonsTest, WhatTheScenarioWroteStays) {
    StartLoop();
    Enqueue(1);
    const JobStatusInfo job = WaitForStatus(JobStatus::Running);
    const std::string own = R"({"version":1,"succeeded":false,"messages":[]})";
    WriteTextFile(job.workDir + L"\\run_scenario_result.json", own);
    processes.front().Finish();
    WaitForStatus(JobStatus::Failed);
    EXPECT_EQ(ReadTextFile(job.workDir + L"\\run_scenario_result.json"), own);
    EXPECT_EQ(ReasonIn(NoteOf(job.id)), L"The scenario reported a failure without saying why.");
}

TEST_F(FailureReasonsTest, AProcessThatLeavesNoResultGetsOne) {
    StartLoop();
    Enqueue(1);
    const JobStatusInfo job = WaitForStatus(JobStatus::Running);
    processes.front().Finish();
    WaitForStatus(JobStatus::Failed);
    const std::wstring reason = ReasonInResult(job);
    EXPECT_TRUE(reason.starts_with(L"The job's process ended")) << text::ToUtf8(reason);
}

TEST_F(FailureReasonsTest, WhatIsWrongWithTheModulesIsAddedWhereNoneTakesTheJob) {
    const FunctionManager nothing({});
    engine = std::make_unique<HostEngine>(&nothing);
    engine->SetModuleProblems({L"The function module m.so cannot be loaded: no such file."});
    EnqueueJobsInfo request;
    request.scenario.id = directory / L"scenarios\\mesh.rb";
    request.outputDir = directory / L"output";
    request.inputFileSets = {{directory / L"part.stl"}};
    JobEnqueueResult result;
    ASSERT_TRUE(engine->EnqueueJob(request, result));
    std::vector<JobStatusInfo> updated;
    engine->ExecuteJob(nullptr, updated);
    ASSERT_EQ(updated.size(), 1U);
    engine->ExplainFailures(updated);
    EXPECT_EQ(ReasonInResult(updated[0]), L"No function module offers \"RunScenario\". The function module m.so "
                                          L"cannot be loaded: no such file.");
    answers.reset();
    engine.reset();
}

TEST_F(FailureReasonsTest, NotesOfJobsThatAreNotListedGoAtTheStart) {
    WriteTextFile(NoteOf(L"a1"), "{}");
    WriteTextFile(directory / L"job_list.json.failures\\other.txt", "");
    engine->FinishDeletions();
    EXPECT_FALSE(platform::Exists(NoteOf(L"a1")));
    EXPECT_TRUE(platform::Exists(directory / L"job_list.json.failures\\other.txt"));
}

TEST_F(FailureReasonsTest, WhatIsNoJobsIdLeadsNowhere) {
    for (const wchar_t* id : {L"", L"..", L"..\\a", L"A1", L"123456789", L"a/b", L"a.json"}) {
        EXPECT_EQ(NoteOf(id), L"") << text::ToUtf8(id);
    }
    JobListInfo job;
    job.id = L"..\\job_list";
    FailureReasons(directory / L"job_list.json").Leave(job, L"a reason");
    EXPECT_FALSE(platform::Exists(directory / L"job_list.json.failures"));
}

} // namespace
