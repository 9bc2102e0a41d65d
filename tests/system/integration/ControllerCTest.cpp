#include "controller_c/controller_c.h"

#include "kit/Deadline.h"
#include "kit/TemporaryDirectory.h"
#include "kit/TestProcess.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "platform/processes/Process.h"
#include "text/Text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

/// The engine in C, with the real function module, runner and scenarios.
namespace {

using testing::HasSubstr;
using testing::Not;

std::string Native(const std::wstring& path) {
    return text::ToUtf8(platform::ToNativeText(path));
}

/// In JSON: both systems accept slashes.
std::string Quoted(const std::wstring& path) {
    std::string text = Native(path);
    for (char& byte : text) {
        byte = byte == '\\' ? '/' : byte;
    }
    return '"' + text + '"';
}

std::string LastError() {
    return controller_c_last_error();
}

/// A result with its document, which is freed.
struct Answer {
    std::int32_t result = -1;
    std::string json;
};

template <typename Function, typename... Arguments>
Answer Call(Function* function, Arguments... arguments) {
    char* text = nullptr;
    Answer answer;
    answer.result = function(arguments..., &text);
    answer.json = text == nullptr ? "" : text;
    controller_c_free(text);
    return answer;
}

class ControllerCTest : public testing::Test {
protected:
    ControllerCTest() {
        WriteTextFile(directory / L"part.stl", "part");
        WriteTextFile(directory / L"other.stl", "other");
        WriteSettings("");
    }
    ~ControllerCTest() override { Close(); }

    void WriteSettings(const std::string& members) const {
        WriteTextFile(
            directory / L"settings.json",
            R"({"version":1,"workDirectory":"work","jobListFile":"jobs.json","logFile":"controller.log",)"
            R"("cancelGraceSeconds":600,"scenarioDirectories":[{"path":"scenarios"}],"interpreters":{".steps":[)" +
                Quoted(test_support::ProgramPath(L"test_scenario")) + "]}" + members + "}");
    }

    std::int32_t Open() { return controller_engine_open(Native(directory / L"settings.json").c_str(), &engine); }
    void Close() {
        EXPECT_EQ(controller_engine_close(engine), CONTROLLER_RESULT_OK) << LastError();
        engine = nullptr;
    }

    /// The text of a jobs file with one job for each input.
    std::string Jobs(const std::string& steps, const std::vector<std::wstring>& inputs,
                     const std::string& members = "") const {
        WriteTextFile(directory / L"scenario.steps", steps);
        std::string sets;
        for (const std::wstring& input : inputs) {
            sets += (sets.empty() ? "[" : ",[") + Quoted(directory / input) + "]";
        }
        return R"({"EnqueueJobs":[{"scenario":{"id":)" + Quoted(directory / L"scenario.steps") + R"(},"outputDir":)" +
               Quoted(directory / L"out") + R"(,"inputFileSets":[)" + sets + "]" + members + "}]}";
    }

    Answer Enqueue(const std::string& jobs) { return Call(controller_engine_enqueue, engine, jobs.c_str()); }
    Answer Wait(const char* jobs, std::int32_t timeout = -1) {
        return Call(controller_engine_wait, engine, jobs, timeout);
    }
    /// Steps until the changes say `expected`.
    void StepUntil(const std::string& expected) {
        const test_support::Deadline deadline("a change to " + expected);
        while (Call(controller_engine_step, engine).json.find(expected) == std::string::npos) {
            std::this_thread::yield();
        }
    }

    const TemporaryDirectory directory;
    controller_engine* engine = nullptr;
};

TEST_F(ControllerCTest, AJobRunsAndItsResultsAreWhereItsRowSays) {
    ASSERT_EQ(Open(), CONTROLLER_RESULT_OK) << LastError();
    const Answer enqueued = Enqueue(Jobs("write output report.txt=seen\nwrite result success", {L"part.stl"}));
    EXPECT_EQ(enqueued.result, CONTROLLER_RESULT_OK) << LastError();
    EXPECT_THAT(enqueued.json, HasSubstr(R"({"version":1,"jobs":[{"number":1,"id":")"));
    const Answer ended = Wait("1");
    EXPECT_EQ(ended.result, CONTROLLER_RESULT_OK) << LastError();
    EXPECT_THAT(ended.json, HasSubstr(R"("status":"Success")"));
    EXPECT_THAT(ended.json, HasSubstr(R"("messages":["its own words"])"));
    EXPECT_EQ(ReadTextFile(directory / L"out\\part\\report.txt"), "seen");
}

TEST_F(ControllerCTest, AFailedJobSaysWhy) {
    ASSERT_EQ(Open(), CONTROLLER_RESULT_OK) << LastError();
    Enqueue(Jobs("write result failure", {L"part.stl"}));
    EXPECT_THAT(Wait("all").json, HasSubstr(R"("status":"Failed","progress":0,"message":"its own words")"));
}

TEST_F(ControllerCTest, AStepReportsEachChangeOnce) {
    ASSERT_EQ(Open(), CONTROLLER_RESULT_OK) << LastError();
    Enqueue(Jobs("write result success", {L"part.stl"}));
    StepUntil(R"("status":"Success")");
    EXPECT_EQ(Call(controller_engine_step, engine).json, R"({"version":1,"jobs":[]})");
}

TEST_F(ControllerCTest, AWaitThatTimesOutReportsTheRunningJob) {
    ASSERT_EQ(Open(), CONTROLLER_RESULT_OK) << LastError();
    Enqueue(Jobs("wait for request\nexit 0", {L"part.stl"}));
    const Answer answer = Wait("1", 0);
    EXPECT_EQ(answer.result, CONTROLLER_RESULT_TIMEOUT);
    EXPECT_THAT(answer.json, HasSubstr(R"("status":"Running")"));
    EXPECT_THAT(LastError(), HasSubstr("time"));
}

TEST_F(ControllerCTest, ARunningJobIsCancelledFromAnotherThreadWhileOneWaits) {
    ASSERT_EQ(Open(), CONTROLLER_RESULT_OK) << LastError();
    Enqueue(Jobs("wait for request\nexit 3", {L"part.stl", L"other.stl"}));
    StepUntil(R"("status":"Running")");
    Answer waited;
    std::thread waiter([&] { waited = Wait("all"); });
    const Answer cancelled = Call(controller_engine_cancel, engine, "all");
    waiter.join();
    EXPECT_THAT(cancelled.json, HasSubstr(R"("number":1)"));
    EXPECT_THAT(cancelled.json, HasSubstr(R"("number":2)"));
    EXPECT_EQ(waited.result, CONTROLLER_RESULT_OK);
    EXPECT_THAT(waited.json, HasSubstr(R"("status":"Canceled")"));
    EXPECT_THAT(waited.json, HasSubstr(R"("status":"Dequeued")"));
}

TEST_F(ControllerCTest, SettingsAndRequestsScheduleAsInAHost) {
    WriteSettings(R"(,"parallelJobs":2)");
    ASSERT_EQ(Open(), CONTROLLER_RESULT_OK) << LastError();
    Enqueue(Jobs("wait for request\nexit 3", {L"part.stl", L"part.stl"}));
    Enqueue(Jobs("wait for request\nexit 3", {L"part.stl"}, R"(,"hold":true)"));
    const std::string jobs = Wait("all", 0).json;
    EXPECT_THAT(jobs, HasSubstr(R"("number":2)"));
    EXPECT_THAT(jobs.substr(jobs.find(R"("number":2)")), HasSubstr(R"("status":"Running")"));
    EXPECT_THAT(jobs.substr(jobs.find(R"("number":3)")), HasSubstr(R"("hold":true)"));
}

TEST_F(ControllerCTest, AnInputThatIsMissingIsRejectedWithItsNameAndTheOthersGetJobs) {
    ASSERT_EQ(Open(), CONTROLLER_RESULT_OK) << LastError();
    const Answer answer = Enqueue(Jobs("write result success", {L"part.stl", L"missing.stl"}));
    EXPECT_EQ(answer.result, CONTROLLER_RESULT_REJECTED);
    EXPECT_THAT(answer.json, HasSubstr(R"({"number":-1,"id":"","reason":"The input file )"));
    EXPECT_THAT(answer.json, HasSubstr(R"("number":1)"));
    EXPECT_THAT(LastError(), HasSubstr("missing.stl does not exist"));
}

TEST_F(ControllerCTest, ARequestWithoutInputsIsRejected) {
    ASSERT_EQ(Open(), CONTROLLER_RESULT_OK) << LastError();
    EXPECT_EQ(Enqueue(Jobs("write result success", {})).result, CONTROLLER_RESULT_REJECTED);
    EXPECT_THAT(LastError(), HasSubstr("names no input files"));
}

TEST_F(ControllerCTest, JobsThatAreNoJobsFileAreRefusedWithThePlace) {
    ASSERT_EQ(Open(), CONTROLLER_RESULT_OK) << LastError();
    EXPECT_EQ(Enqueue("{\"EnqueueJobs\":[{\"outputDirr\":1}]}").result, CONTROLLER_RESULT_BAD_ARGUMENT);
    EXPECT_THAT(LastError(), HasSubstr("line 1, column"));
    EXPECT_THAT(LastError(), HasSubstr("outputDir"));
    EXPECT_EQ(Enqueue("").result, CONTROLLER_RESULT_BAD_ARGUMENT);
}

TEST_F(ControllerCTest, TheListOutlivesTheEngine) {
    ASSERT_EQ(Open(), CONTROLLER_RESULT_OK) << LastError();
    Enqueue(Jobs("write result success", {L"part.stl"}));
    Wait("1");
    Close();
    ASSERT_EQ(Open(), CONTROLLER_RESULT_OK) << LastError();
    EXPECT_THAT(Call(controller_engine_list, engine).json, HasSubstr(R"("status":"Success")"));
}

TEST_F(ControllerCTest, ClosingStopsWhatRuns) {
    ASSERT_EQ(Open(), CONTROLLER_RESULT_OK) << LastError();
    Enqueue(Jobs("be ready\nwait for request\nexit 3", {L"part.stl"}));
    StepUntil(R"("status":"Running")");
    Close();
    ASSERT_EQ(Open(), CONTROLLER_RESULT_OK) << LastError();
    EXPECT_THAT(Call(controller_engine_list, engine).json, HasSubstr(R"("status":"Canceled")"));
}

TEST_F(ControllerCTest, DeletedJobsAreGoneWithTheirWorkDirectories) {
    ASSERT_EQ(Open(), CONTROLLER_RESULT_OK) << LastError();
    Enqueue(Jobs("write result success", {L"part.stl", L"other.stl"}));
    Wait("all");
    EXPECT_THAT(Call(controller_engine_delete, engine, "1").json, HasSubstr(R"({"version":1,"deleted":[")"));
    EXPECT_THAT(Call(controller_engine_list, engine).json, Not(HasSubstr(R"("number":1)")));
    EXPECT_EQ(Call(controller_engine_delete, engine, "all").result, CONTROLLER_RESULT_OK);
    EXPECT_EQ(Call(controller_engine_list, engine).json, R"({"version":1,"jobs":[]})");
    EXPECT_EQ(Call(controller_engine_delete, engine, "all").json, R"({"version":1,"deleted":[]})");
}

TEST_F(ControllerCTest, AnUnknownJobIsNamedAndNothingIsDone) {
    ASSERT_EQ(Open(), CONTROLLER_RESULT_OK) << LastError();
    Enqueue(Jobs("write result success", {L"part.stl"}));
    EXPECT_EQ(Call(controller_engine_cancel, engine, "1, 7").result, CONTROLLER_RESULT_BAD_ARGUMENT);
    EXPECT_THAT(LastError(), HasSubstr("no job 7"));
    EXPECT_THAT(Call(controller_engine_status, engine, "1").json, HasSubstr(R"("status":"Queued")"));
    EXPECT_EQ(Call(controller_engine_status, engine, " ,").result, CONTROLLER_RESULT_BAD_ARGUMENT);
}

TEST_F(ControllerCTest, ScenariosOfTheSettingsAreListed) {
    WriteTextFile(directory / L"scenarios\\measure.steps", "exit 0");
    ASSERT_EQ(Open(), CONTROLLER_RESULT_OK) << LastError();
    EXPECT_THAT(Call(controller_engine_scenarios, engine).json, HasSubstr(R"("name":"measure")"));
}

TEST_F(ControllerCTest, AnErrorIsForgottenByTheNextSuccess) {
    ASSERT_EQ(Open(), CONTROLLER_RESULT_OK) << LastError();
    EXPECT_EQ(Call(controller_engine_status, engine, "9").result, CONTROLLER_RESULT_BAD_ARGUMENT);
    EXPECT_NE(LastError(), "");
    EXPECT_EQ(Call(controller_engine_list, engine).result, CONTROLLER_RESULT_OK);
    EXPECT_EQ(LastError(), "");
}

TEST_F(ControllerCTest, OneProcessHasOneEngine) {
    ASSERT_EQ(Open(), CONTROLLER_RESULT_OK) << LastError();
    controller_engine* second = engine;
    EXPECT_EQ(controller_engine_open(nullptr, &second), CONTROLLER_RESULT_IN_USE);
    EXPECT_EQ(second, nullptr);
    EXPECT_THAT(LastError(), HasSubstr("close it first"));
}

TEST_F(ControllerCTest, SettingsThatAreWrongAreRefusedWithThePlace) {
    WriteSettings(R"(,"parallelJobs":"many")");
    EXPECT_EQ(Open(), CONTROLLER_RESULT_FAILED);
    EXPECT_EQ(engine, nullptr);
    EXPECT_THAT(LastError(), HasSubstr("parallelJobs"));
    WriteSettings("");
    EXPECT_EQ(Open(), CONTROLLER_RESULT_OK) << LastError();
}

TEST_F(ControllerCTest, SettingsThatAreMissingAreRefused) {
    EXPECT_EQ(controller_engine_open(Native(directory / L"none.json").c_str(), &engine), CONTROLLER_RESULT_FAILED);
    EXPECT_THAT(LastError(), HasSubstr("none.json"));
}

TEST_F(ControllerCTest, WithoutAModuleThatRunsScenariosTheEngineDoesNotOpen) {
    WriteSettings(R"(,"functionModules":["no_module"])");
    EXPECT_EQ(Open(), CONTROLLER_RESULT_FAILED);
    EXPECT_THAT(LastError(), HasSubstr("no_module"));
}

TEST_F(ControllerCTest, NullArgumentsAreRefused) {
    char* text = nullptr;
    EXPECT_EQ(controller_engine_open(nullptr, nullptr), CONTROLLER_RESULT_BAD_ARGUMENT);
    EXPECT_EQ(controller_engine_list(nullptr, &text), CONTROLLER_RESULT_BAD_ARGUMENT);
    EXPECT_THAT(LastError(), HasSubstr("\"engine\" is null"));
    EXPECT_EQ(controller_engine_close(nullptr), CONTROLLER_RESULT_OK);
    ASSERT_EQ(Open(), CONTROLLER_RESULT_OK) << LastError();
    EXPECT_EQ(controller_engine_list(engine, nullptr), CONTROLLER_RESULT_BAD_ARGUMENT);
    EXPECT_EQ(controller_engine_status(engine, nullptr, &text), CONTROLLER_RESULT_BAD_ARGUMENT);
    EXPECT_EQ(controller_engine_status(engine, "\xff", &text), CONTROLLER_RESULT_BAD_ARGUMENT);
    EXPECT_THAT(LastError(), HasSubstr("not UTF-8"));
    EXPECT_EQ(controller_engine_enqueue(engine, nullptr, &text), CONTROLLER_RESULT_BAD_ARGUMENT);
    EXPECT_EQ(controller_engine_step(engine, nullptr), CONTROLLER_RESULT_OK);
    EXPECT_EQ(text, nullptr);
}

TEST_F(ControllerCTest, TheVersionsAreThoseOfTheHeaderAndOfTheProduct) {
    EXPECT_EQ(controller_c_version(), CONTROLLER_C_VERSION);
    EXPECT_STREQ(controller_c_product_version(), CONTROLLER_VERSION);
}

} // namespace
