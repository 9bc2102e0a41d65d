#include "controller_host/hooks/Hooks.h"

#include "kit/controller_host/AnswersFixture.h"
#include "platform/files/NativePath.h"

#include <optional>

namespace {

/// The host's engine and its hooks; the test takes the turns of the loop, and receives the calls.
class HooksTest : public AnswersFixture {
protected:
    void Configure(const std::string& hookMembers) {
        WriteTextFile(directory / L"settings.json",
                      R"({"version":1,"workDirectory":"work","jobListFile":"job_list.json","logFile":"",)"
                      R"("scenarioDirectories":[{"path":"scenarios"}],"hooks":{)" +
                          hookMembers + "}}");
        settings::UseFile(directory / L"settings.json");
    }

    void TakeTurn() {
        std::vector<JobStatusInfo> changed;
        engine->CheckUpdate(changed);
        hooks.OnJobsChanged(changed);
        std::vector<JobStatusInfo> started;
        while (engine->ExecuteJob(nullptr, started)) {
            hooks.OnJobsChanged(started);
            started.clear();
        }
        hooks.OnTurnEnded();
    }

    JobIdInfo RunOne() {
        const JobIdInfo job =
            Enqueued(RequestFor(directory / L"scenarios\\mesh.rb", {directory / L"part.stl"})).jobIds[0];
        TakeTurn();
        return job;
    }

    void SucceedLast() {
        WriteTextFile(Jobs().back().workDir + L"\\run_scenario_result.json",
                      R"({"version":1,"jobId":"x","succeeded":true})");
        FailLast();
    }
    /// A process that leaves no result has failed.
    void FailLast() {
        processes.back().Finish();
        TakeTurn();
    }

    std::vector<std::wstring> Events() const {
        std::vector<std::wstring> events;
        for (const HookCall& call : calls) {
            events.push_back(call.event);
        }
        return events;
    }
    static std::optional<std::wstring> Variable(const HookCall& call, const std::wstring& name) {
        for (const auto& [variable, value] : call.environment) {
            if (variable == L"CONTROLLER_" + name) {
                return value;
            }
        }
        return L"(not named)";
    }

    static constexpr const char* all = R"("jobEnded":["a"],"jobFailed":["b"],"queueEmpty":["c"])";

    std::vector<HookCall> calls;
    Hooks hooks{*engine, [this](HookCall call) { calls.push_back(std::move(call)); }};
};

using Texts = std::vector<std::wstring>;

TEST_F(HooksTest, AJobThatSucceedsRunsJobEndedWithItsData) {
    Configure(R"("jobEnded":["mail","--to","me"],"jobFailed":["b"])");
    const JobIdInfo job = RunOne();
    EXPECT_EQ(Events(), Texts());
    SucceedLast();
    ASSERT_EQ(Events(), Texts{L"jobEnded"});
    EXPECT_EQ(calls[0].command, (Texts{L"mail", L"--to", L"me"}));
    EXPECT_EQ(calls[0].subject, L"job " + std::to_wstring(job.seqId));
    EXPECT_EQ(calls[0].directory, directory.Path());
    EXPECT_EQ(Variable(calls[0], L"EVENT"), L"jobEnded");
    EXPECT_EQ(Variable(calls[0], L"JOB_NUMBER"), std::to_wstring(job.seqId));
    EXPECT_EQ(Variable(calls[0], L"JOB_ID"), job.id);
    EXPECT_EQ(Variable(calls[0], L"JOB_STATUS"), L"Success");
    EXPECT_EQ(Variable(calls[0], L"JOB_OUTPUT"), platform::ToNativeText(Jobs()[0].outputDir));
    EXPECT_EQ(Variable(calls[0], L"JOB_SCENARIO"), Jobs()[0].scenario.displayName);
}

TEST_F(HooksTest, AJobThatFailsRunsJobEndedAndJobFailed) {
    Configure(R"("jobEnded":["a"],"jobFailed":["b"])");
    RunOne();
    FailLast();
    ASSERT_EQ(Events(), (Texts{L"jobEnded", L"jobFailed"}));
    EXPECT_EQ(calls[1].command, Texts{L"b"});
    EXPECT_EQ(Variable(calls[1], L"EVENT"), L"jobFailed");
    EXPECT_EQ(Variable(calls[1], L"JOB_STATUS"), L"Failed");
}

TEST_F(HooksTest, ACancelledJobRunsJobEndedOnceItHasEnded) {
    Configure(R"("jobEnded":["a"],"jobFailed":["b"])");
    RunOne();
    Ask(L"CancelAllJobs");
    TakeTurn();
    EXPECT_EQ(Events(), Texts());
    FailLast();
    ASSERT_EQ(Events(), Texts{L"jobEnded"});
    EXPECT_EQ(Variable(calls[0], L"JOB_STATUS"), L"Canceled");
}

TEST_F(HooksTest, AJobThatNeverStartedHasNotEnded) {
    Configure(R"("jobEnded":["a"],"jobFailed":["b"])");
    RunOne();
    RunOne();
    Ask(L"CancelAllJobs");
    TakeTurn();
    EXPECT_EQ(Jobs()[1].status, JobStatus::Dequeued);
    EXPECT_EQ(Events(), Texts());
}

TEST_F(HooksTest, TheQueueIsEmptyOnceWhenTheLastJobHasEnded) {
    Configure(R"("queueEmpty":["c","d"])");
    RunOne();
    RunOne();
    SucceedLast();
    EXPECT_EQ(Events(), Texts());
    FailLast();
    ASSERT_EQ(Events(), Texts{L"queueEmpty"});
    EXPECT_EQ(calls[0].command, (Texts{L"c", L"d"}));
    EXPECT_EQ(calls[0].subject, L"");
    EXPECT_EQ(Variable(calls[0], L"EVENT"), L"queueEmpty");
    EXPECT_EQ(Variable(calls[0], L"JOB_ID"), std::nullopt);
    TakeTurn();
    EXPECT_EQ(calls.size(), 1U);
    RunOne();
    FailLast();
    EXPECT_EQ(calls.size(), 2U);
}

TEST_F(HooksTest, AQueueInWhichNothingHappenedDoesNotBecomeEmpty) {
    Configure(all);
    TakeTurn();
    EXPECT_EQ(Events(), Texts());
}

/// Such a job is never seen waiting or running between two turns.
TEST_F(HooksTest, TheQueueIsEmptyAfterAJobThatFailsWhileItIsStarted) {
    Configure(all);
    script.answer = [](const test_modules::Call&, std::wstring&) { return 1L; };
    RunOne();
    EXPECT_EQ(Jobs()[0].status, JobStatus::Failed);
    EXPECT_EQ(Events(), (Texts{L"jobEnded", L"jobFailed", L"queueEmpty"}));
}

TEST_F(HooksTest, NothingIsRunWithoutASetting) {
    RunOne();
    FailLast();
    EXPECT_EQ(Events(), Texts());
}

TEST_F(HooksTest, AChangeOfTheSettingCountsForTheNextEvent) {
    RunOne();
    Configure(R"("jobFailed":["b"])");
    FailLast();
    EXPECT_EQ(Events(), Texts{L"jobFailed"});
}

} // namespace
