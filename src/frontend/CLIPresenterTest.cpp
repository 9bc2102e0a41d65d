#include "CommonControllerLib/CLIPresenter.h"

#include "kit/TemporaryDirectory.h"
#include "kit/doubles/RecordingCompanion.h"
#include "kit/doubles/ScriptedTransmitter.h"
#include "kit/doubles/TurnedClock.h"
#include "kit/modules/ModuleFiles.h"
#include "platform/files/FileSystem.h"

#include <chrono>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

namespace {

using namespace std::chrono_literals;
using Events = std::vector<ScriptedTransmitter::Event>;
using Texts = std::vector<std::wstring>;

static_assert(!std::is_copy_constructible_v<CLIPresenter> && !std::is_copy_assignable_v<CLIPresenter>);

/// The lines of a text file with the line ends of this system.
std::string Lines(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) {
        text += line;
        text += platform::lineEnd;
    }
    return text;
}

JobStatusInfo Status(const std::wstring& id, JobStatus status) {
    JobStatusInfo info;
    info.id = id;
    info.status = status;
    return info;
}

/// A presenter with a test transmitter and an engine that answers from a script.
class CLIPresenterTest : public testing::Test {
protected:
    /// A jobs file with this many requests.
    void WriteJobsFile(std::size_t requests) {
        companion.messages.jobsFiles[jobsFile] = std::vector<EnqueueJobsInfo>(requests);
    }

    /// The response to the request with this number in the jobs file.
    void ScriptEnqueued(int request, const std::vector<JobIdInfo>& jobs) {
        const std::wstring number = std::to_wstring(request);
        companion.messages.Add(L"enqueued " + number, JobEnqueueResult{jobs, L"guid " + number, {}});
    }

    /// Each request is answered before `SendEvent` returns.
    void AnswerAtOnce() {
        transmitter.onSend = [this](const auto& event) { Answer(event); };
    }

    void Answer(const ScriptedTransmitter::Event& request) {
        if (request.name == L"EnqueueJobs") {
            EXPECT_TRUE(transmitter.Deliver(L"EnqueueJobsFinish", L"enqueued " + request.payload.substr(18)));
        } else if (request.name == L"CheckJobStatusRequest") {
            EXPECT_TRUE(transmitter.Deliver(L"CheckJobStatusResponse", L"statuses"));
        }
    }

    void Enqueue() { presenter.EnqueueJobsFromFile(jobsFile, outputFile); }

    std::string Output() { return ReadTextFile(outputFile); }
    bool HasOutput() {
        try {
            Output();
            return true;
        } catch (const std::runtime_error&) {
            return false;
        }
    }

    TemporaryDirectory directory;
    const std::wstring jobsFile = L"C:\\jobs.json";
    const std::wstring outputFile = directory / L"out \u00e4\u4e16.txt";
    RecordingCompanion companion;
    TurnedClock clock;
    ScriptedTransmitter transmitter;
    CLIPresenter presenter{transmitter.Id(), test_modules::ModulePath(L"transmitter_by_address")};
};

TEST_F(CLIPresenterTest, RegistersItsHandlersWithTheModulesTransmitter) {
    EXPECT_EQ(transmitter.registered.size(), 11U);
}

TEST_F(CLIPresenterTest, ThreeEntriesWhoseAnswersArriveGiveThreeGroupsOfLinesInFileOrder) {
    WriteJobsFile(3);
    ScriptEnqueued(1, {{L"a", 12}, {L"b", 13}});
    ScriptEnqueued(2, {{L"c", 14}});
    ScriptEnqueued(3, {{L"d", 9}, {L"e", 10}});
    AnswerAtOnce();
    Enqueue();
    EXPECT_EQ(Output(), Lines({"12,Queued", "13,Queued", "14,Queued", "9,Queued", "10,Queued"}));
    EXPECT_EQ(clock.SleepCount(), 0);
}

TEST_F(CLIPresenterTest, EachRequestIsSentUnderAnIdOfItsOwn) {
    WriteJobsFile(2);
    Enqueue();
    EXPECT_EQ(transmitter.sent,
              (Events{{L"EnqueueJobs", L"EnqueueJobs: guid 1"}, {L"EnqueueJobs", L"EnqueueJobs: guid 2"}}));
}

TEST_F(CLIPresenterTest, TenThousandJobsInOneAnswerGiveTenThousandLines) {
    std::vector<JobIdInfo> jobs;
    std::vector<std::string> expected;
    for (int seqId = 1; seqId <= 10000; ++seqId) {
        jobs.push_back({L"id " + std::to_wstring(seqId), seqId});
        expected.push_back(std::to_string(seqId) + ",Queued");
    }
    WriteJobsFile(1);
    ScriptEnqueued(1, jobs);
    AnswerAtOnce();
    Enqueue();
    EXPECT_EQ(Output(), Lines(expected));
}

TEST_F(CLIPresenterTest, AnEmptyIdInTheAnswerWritesFailedForThatJobOnly) {
    WriteJobsFile(1);
    ScriptEnqueued(1, {{L"a", 5}, {L"", 0}, {L"c", 6}});
    AnswerAtOnce();
    Enqueue();
    EXPECT_EQ(Output(), Lines({"5,Queued", "-1,Failed", "6,Queued"}));
}

TEST_F(CLIPresenterTest, AnAnswerIsWaitedForTwentyTimesTenMilliseconds) {
    WriteJobsFile(1);
    ScriptEnqueued(1, {{L"a", 5}});
    clock.onSleep = [this](int sleeps) {
        if (sleeps == 20) {
            Answer(transmitter.sent.at(0));
        }
    };
    Enqueue();
    EXPECT_EQ(Output(), Lines({"5,Queued"}));
    EXPECT_TRUE(clock.SleptOnly(10ms));
    EXPECT_TRUE(companion.Events(L"error: ").empty());
}

TEST_F(CLIPresenterTest, WithoutAnAnswerAfter200MillisecondsTheRequestFailsAndTheNextIsSent) {
    WriteJobsFile(2);
    ScriptEnqueued(2, {{L"b", 7}});
    AnswerAtOnce();
    transmitter.onSend = [this](const auto& event) {
        if (event.payload == L"EnqueueJobs: guid 2") {
            Answer(event);
        }
    };
    Enqueue();
    EXPECT_EQ(Output(), Lines({"-1,Failed", "7,Queued"}));
    EXPECT_EQ(clock.Elapsed(), 200ms);
    EXPECT_EQ(companion.Events(L"error: "), Texts{L"Failed to EnqueueJobs"});
}

TEST_F(CLIPresenterTest, AnAnswerWithoutJobsCountsAsNone) {
    WriteJobsFile(1);
    ScriptEnqueued(1, {});
    AnswerAtOnce();
    Enqueue();
    EXPECT_EQ(Output(), Lines({"-1,Failed"}));
    EXPECT_EQ(clock.SleepCount(), 20);
}

TEST_F(CLIPresenterTest, AnswersThatArriveTooLateOrTwiceDoNoHarm) {
    WriteJobsFile(1);
    ScriptEnqueued(1, {{L"a", 5}});
    Enqueue();
    EXPECT_TRUE(transmitter.Deliver(L"EnqueueJobsFinish", L"enqueued 1"));
    EXPECT_TRUE(transmitter.Deliver(L"EnqueueJobsFinish", L"enqueued 1"));
    EXPECT_EQ(Output(), Lines({"-1,Failed"}));
}

TEST_F(CLIPresenterTest, EnqueueingIsLogged) {
    WriteJobsFile(1);
    ScriptEnqueued(1, {{L"a", 5}, {L"", 0}});
    AnswerAtOnce();
    Enqueue();
    EXPECT_EQ(companion.Events(), (Texts{L"debug: Reading job list file: \"C:\\jobs.json\".",
                                         L"debug: Succeeded to read the job list file.", L"info: Job: 5 is added.",
                                         L"info: Job: 0 is added."}));
}

TEST_F(CLIPresenterTest, AJobsFileThatCannotBeReadIsLoggedAndMakesNoOutputFile) {
    Enqueue();
    EXPECT_EQ(companion.Events(), (Texts{L"debug: Reading job list file: \"C:\\jobs.json\".",
                                         L"error: Failed to read the job list file."}));
    EXPECT_FALSE(HasOutput());
    EXPECT_TRUE(transmitter.sent.empty());
}

TEST_F(CLIPresenterTest, AJobsFileWithoutEntriesGivesAnEmptyOutputFileAndNoRequest) {
    WriteJobsFile(0);
    WriteTextFile(outputFile, "of an earlier run");
    Enqueue();
    EXPECT_EQ(Output(), "");
    EXPECT_TRUE(transmitter.sent.empty());
}

TEST_F(CLIPresenterTest, AnOutputFileThatCannotBeOpenedLosesItsLinesSilently) {
    WriteJobsFile(1);
    ScriptEnqueued(1, {{L"a", 5}});
    ScriptEnqueued(2, {{L"b", 6}});
    AnswerAtOnce();
    presenter.EnqueueJobsFromFile(jobsFile, directory / L"missing folder\\out.txt");
    presenter.EnqueueJobsFromFile(jobsFile, L"");
    EXPECT_EQ(transmitter.sent.size(), 2U);
}

TEST_F(CLIPresenterTest, TheOutputFileIsThereAndEmptyBeforeTheFirstRequestIsSent) {
    WriteJobsFile(1);
    ScriptEnqueued(1, {{L"a", 5}});
    WriteTextFile(outputFile, "of an earlier run");
    std::string atFirstRequest = "not looked at";
    transmitter.onSend = [&](const auto& event) {
        atFirstRequest = Output();
        Answer(event);
    };
    Enqueue();
    EXPECT_EQ(atFirstRequest, "");
    EXPECT_EQ(Output(), Lines({"5,Queued"}));
}

TEST_F(CLIPresenterTest, CancelSendsOneIdAndWritesNoOutputFile) {
    presenter.CancelJobs(L"3f9");
    EXPECT_EQ(transmitter.sent, (Events{{L"CancelJobs", L"CancelJobs: 3f9"}}));
    EXPECT_EQ(companion.Events(), Texts{L"info: Job: 3f9 is canceling."});
    EXPECT_FALSE(HasOutput());
    EXPECT_EQ(clock.SleepCount(), 0);
}

TEST_F(CLIPresenterTest, CancelAllSendsOneRequestAndWaitsForNothing) {
    presenter.CancelAllJobs();
    EXPECT_EQ(transmitter.sent, (Events{{L"CancelAllJobs", L"CancelAllJobs"}}));
    EXPECT_EQ(companion.Events(), Texts{L"info: Canceling all jobs."});
    EXPECT_EQ(clock.SleepCount(), 0);
}

TEST_F(CLIPresenterTest, CancelledJobsAreLogged) {
    companion.messages.Add(
        L"statuses", std::vector<JobStatusInfo>{Status(L"a", JobStatus::Canceled), Status(L"b", JobStatus::Canceled)});
    EXPECT_TRUE(transmitter.Deliver(L"CancelJobsFinish", L"statuses"));
    EXPECT_EQ(companion.Events(), (Texts{L"debug: JobID: a is canceled.", L"debug: JobID: b is canceled."}));
}

/// Records calls of `UpdateProgress`, and refuses them.
class ProgressPresenter final : public CLIPresenter {
public:
    using CLIPresenter::CLIPresenter;
    bool UpdateProgress(const std::vector<JobStatusInfo>& infos) override {
        updated = infos;
        return false;
    }
    std::vector<JobStatusInfo> updated;
};

TEST_F(CLIPresenterTest, CancelledJobsAreHandedToThePresentersOwnUpdateProgress) {
    ProgressPresenter derived(transmitter.Id(), test_modules::ModulePath(L"transmitter_by_address"));
    const std::vector<JobStatusInfo> infos = {Status(L"a", JobStatus::Canceling)};
    EXPECT_FALSE(derived.CancelJobsFinish(infos));
    EXPECT_EQ(derived.updated, infos);
}

TEST_F(CLIPresenterTest, StatusOfFiveAndXGivesALineForJobFiveAndOneForJobZero) {
    companion.messages.Add(L"statuses", std::vector<JobStatusInfo>{Status(L"5", JobStatus::Running),
                                                                   Status(L"x", static_cast<JobStatus>(-1))});
    AnswerAtOnce();
    presenter.CheckJobStatus({L"5", L"x"}, outputFile);
    EXPECT_EQ(transmitter.sent, (Events{{L"CheckJobStatusRequest", L"CheckJobStatusRequest: 5,x"}}));
    EXPECT_EQ(Output(), Lines({"5,Running", "0,Unknown"}));
    EXPECT_EQ(companion.Events(), (Texts{L"info: Status of Job:5 is Running", L"info: Status of Job:0 is Unknown"}));
    EXPECT_EQ(clock.SleepCount(), 0);
}

TEST_F(CLIPresenterTest, StatusWithoutAnswerIsUnknownAfterTheWait) {
    presenter.CheckJobStatus({L"5", L" 6 "}, outputFile);
    EXPECT_EQ(Output(), Lines({"5,Unknown", "6,Unknown"}));
    EXPECT_EQ(clock.Elapsed(), 19900ms);
    EXPECT_TRUE(companion.Events(L"error: ").empty());
}

TEST_F(CLIPresenterTest, StatusThatArrivesWhileWaitingIsWritten) {
    companion.messages.Add(L"statuses", std::vector<JobStatusInfo>{Status(L"5", JobStatus::Success)});
    clock.onSleep = [this](int sleeps) {
        if (sleeps == 3) {
            Answer(transmitter.sent.at(0));
        }
    };
    presenter.CheckJobStatus({L"5"}, outputFile);
    EXPECT_EQ(Output(), Lines({"5,Success"}));
    EXPECT_EQ(clock.Elapsed(), 300ms);
}

TEST_F(CLIPresenterTest, AnEarlierAnswerDoesNotEndTheWaitForTheNext) {
    companion.messages.Add(L"statuses", std::vector<JobStatusInfo>{Status(L"5", JobStatus::Success)});
    EXPECT_TRUE(transmitter.Deliver(L"CheckJobStatusResponse", L"statuses"));
    presenter.CheckJobStatus({L"5"}, outputFile);
    EXPECT_EQ(clock.Elapsed(), 19900ms);
    EXPECT_EQ(Output(), Lines({"5,Success"}));
}

TEST_F(CLIPresenterTest, AnAnswerToAnotherPresenterEndsTheWaitWithoutItsStatus) {
    ScriptedTransmitter otherLine;
    CLIPresenter other(otherLine.Id(), test_modules::ModulePath(L"transmitter_by_address"));
    companion.messages.Add(L"statuses", std::vector<JobStatusInfo>{Status(L"5", JobStatus::Success)});
    transmitter.onSend = [&](const auto&) { EXPECT_TRUE(otherLine.Deliver(L"CheckJobStatusResponse", L"statuses")); };
    presenter.CheckJobStatus({L"5"}, outputFile);
    EXPECT_EQ(clock.SleepCount(), 0);
    EXPECT_EQ(Output(), Lines({"5,Unknown"}));
    std::wstring id;
    EXPECT_TRUE(other.FindJobId(5, id));
}

TEST_F(CLIPresenterTest, StatusWithoutATransmitterIsWaitedForAndThenUnknown) {
    CLIPresenter unconnected(L"any", test_modules::ModulePath(L"no_such_module"));
    unconnected.CheckJobStatus({L"5"}, outputFile);
    EXPECT_EQ(clock.Elapsed(), 19900ms);
    EXPECT_EQ(Output(), Lines({"5,Unknown"}));
    unconnected.SetEventTransmitter(&transmitter); // keeps its handlers reachable
}

TEST_F(CLIPresenterTest, StatusOfNoIdsGivesAnEmptyOutputFile) {
    AnswerAtOnce();
    companion.messages.Add(L"statuses", std::vector<JobStatusInfo>());
    presenter.CheckJobStatus({}, outputFile);
    EXPECT_EQ(Output(), "");
}

TEST_F(CLIPresenterTest, FindsTheIdOfAJobThatAStatusAnswerTold) {
    companion.messages.Add(L"statuses", std::vector<JobStatusInfo>{Status(L" 7th", JobStatus::Queued)});
    EXPECT_TRUE(transmitter.Deliver(L"CheckJobStatusResponse", L"statuses"));
    std::wstring id = L"untouched";
    EXPECT_FALSE(presenter.FindJobId(5, id));
    EXPECT_EQ(id, L"untouched");
    EXPECT_TRUE(presenter.FindJobId(7, id));
    EXPECT_EQ(id, L" 7th");
}

TEST_F(CLIPresenterTest, ALaterStatusReplacesAnEarlierOne) {
    EXPECT_TRUE(presenter.CheckJobStatusResponse({Status(L"7", JobStatus::Queued)}));
    EXPECT_TRUE(presenter.CheckJobStatusResponse({Status(L"07", JobStatus::Failed)}));
    std::wstring id;
    EXPECT_TRUE(presenter.FindJobId(7, id));
    EXPECT_EQ(id, L"07");
}

TEST_F(CLIPresenterTest, TheOtherAnswersDoNothingAndAreTrue) {
    EXPECT_TRUE(presenter.UpdateProgress({}));
    EXPECT_TRUE(presenter.FetchScenariosResponse({}));
    EXPECT_TRUE(presenter.FetchScenarioParameterSetsResponse({}));
    EXPECT_TRUE(presenter.InitJobsResponse({}));
    EXPECT_TRUE(presenter.DeleteJobsResponse({}));
    EXPECT_TRUE(presenter.FetchLocalizedStringsResponse(L""));
    EXPECT_TRUE(presenter.InitCultureResponse(L""));
    EXPECT_TRUE(presenter.TerminateResponse());
    EXPECT_TRUE(presenter.ClearUserSettingsResponse({}));
    EXPECT_TRUE(presenter.FetchPreviousStateFilePathResponse(L""));
    EXPECT_TRUE(presenter.FetchScenarioEditorPathResponse(L""));
    EXPECT_TRUE(presenter.FetchServiceListResponse({}));
    EXPECT_TRUE(presenter.FetchThirdPartyNoticesPathResponse(L""));
    EXPECT_TRUE(presenter.FetchUserSettingsResponse({}));
    EXPECT_TRUE(presenter.ShowSettingDialogResponse());
    EXPECT_TRUE(presenter.WriteUserSettingsResponse());
    EXPECT_TRUE(companion.Events().empty());
}

TEST_F(CLIPresenterTest, WithoutAModuleEveryRequestFails) {
    CLIPresenter unconnected(L"any", test_modules::ModulePath(L"no_such_module"));
    unconnected.SetEventTransmitter(&transmitter); // keeps its handlers reachable
    WriteJobsFile(1);
    unconnected.EnqueueJobsFromFile(jobsFile, outputFile);
    EXPECT_EQ(Output(), Lines({"-1,Failed"}));
    unconnected.CancelJobs(L"1");
    unconnected.CancelAllJobs();
    EXPECT_TRUE(transmitter.sent.empty());
}

TEST_F(CLIPresenterTest, AModuleWithoutTheExportOrWithoutATransmitterIsNoConnection) {
    const std::wstring modules[] = {test_modules::ModulePath(L"transmitter_without_export"),
                                    test_modules::ModulePath(L"transmitter_by_address")};
    for (const std::wstring& module : modules) {
        CLIPresenter unconnected(L"unknown", module);
        unconnected.SetEventTransmitter(&transmitter); // keeps its handlers reachable
        unconnected.CancelAllJobs();
    }
    EXPECT_TRUE(transmitter.sent.empty());
}

TEST(CLIPresenterTest_StatusString, NamesEveryStatus) {
    EXPECT_EQ(CLIPresenter::CreateStatusString(0, JobStatus::Queued), "0,Queued\n");
    EXPECT_EQ(CLIPresenter::CreateStatusString(12, JobStatus::Running), "12,Running\n");
    EXPECT_EQ(CLIPresenter::CreateStatusString(12, JobStatus::Success), "12,Success\n");
    EXPECT_EQ(CLIPresenter::CreateStatusString(-1, JobStatus::Failed), "-1,Failed\n");
    EXPECT_EQ(CLIPresenter::CreateStatusString(2147483647, JobStatus::Dequeued), "2147483647,Dequeued\n");
    EXPECT_EQ(CLIPresenter::CreateStatusString(12, JobStatus::Canceling), "12,Canceling\n");
    EXPECT_EQ(CLIPresenter::CreateStatusString(12, JobStatus::Canceled), "12,Canceled\n");
    EXPECT_EQ(CLIPresenter::CreateStatusString(12, static_cast<JobStatus>(7)), "12,Unknown\n");
    EXPECT_EQ(CLIPresenter::CreateStatusString(12, static_cast<JobStatus>(-1)), "12,Unknown\n");
}

} // namespace
