#include "formats/JobStates.h"
#include "kit/controller_host/AnswersFixture.h"

namespace {

class RequestHandlerTest : public AnswersFixture {
protected:
    void AskForJobs(std::size_t count) { Ask(L"EnqueueJobs", EnqueueRequest(count)); }
};

using Texts = std::vector<std::wstring>;

TEST_F(RequestHandlerTest, EnqueueJobsIsAnsweredWithTheNumbersAndToldToEverybody) {
    AskForJobs(2);
    const auto result = Answered<JobEnqueueResult>(L"EnqueueJobsFinish");
    ASSERT_EQ(result.jobIds.size(), 2U);
    EXPECT_EQ(result.jobIds[1].seqId, 2);
    const LineDouble::Sent told = line.WaitFor(L"UpdateProgress");
    EXPECT_EQ(told.peer, 0U);
}

TEST_F(RequestHandlerTest, ARefusedEnqueueIsAnsweredWithoutIds) {
    EnqueueJobsInfo request;
    request.requestId = L"r";
    request.inputFileSets = {{L"nothing.stl"}};
    request.scenario.id = L"no such scenario";
    Ask(L"EnqueueJobs", ControllerCSWrapper::Serialize(L"EnqueueJobs", request));
    const auto result = Answered<JobEnqueueResult>(L"EnqueueJobsFinish");
    EXPECT_EQ(result.requestId, L"r");
    EXPECT_EQ(result.jobIds, std::vector<JobIdInfo>(1));
}

TEST_F(RequestHandlerTest, CancelAllJobsIsAnsweredWithTheCancelledJobs) {
    AskForJobs(2);
    Ask(L"CancelAllJobs");
    const auto cancelled = Answered<std::vector<JobStatusInfo>>(L"CancelJobsFinish");
    ASSERT_EQ(cancelled.size(), 2U);
    EXPECT_EQ(cancelled[0].status, JobStatus::Dequeued);
}

TEST_F(RequestHandlerTest, CheckJobStatusRequestIsAnsweredInRequestOrder) {
    AskForJobs(1);
    Ask(L"CheckJobStatusRequest", ControllerCSWrapper::Serialize(L"CheckJobStatusRequest", Texts{L"9", L"1"}));
    const auto statuses = Answered<std::vector<JobStatusInfo>>(L"CheckJobStatusResponse");
    ASSERT_EQ(statuses.size(), 2U);
    EXPECT_EQ(statuses[0].status, unlistedStatus);
    EXPECT_EQ(statuses[1].status, JobStatus::Queued);
}

TEST_F(RequestHandlerTest, FetchScenariosRequestIsAnsweredWithTheCatalogue) {
    Ask(L"FetchScenariosRequest");
    const auto scenarios = Answered<std::vector<ScenarioInfo>>(L"FetchScenariosResponse");
    ASSERT_EQ(scenarios.size(), 1U);
    EXPECT_EQ(scenarios[0].displayName, L"mesh");
}

TEST_F(RequestHandlerTest, FetchScenarioParameterSetsRequestNeedsAScenario) {
    const std::wstring name = L"FetchScenarioParameterSetsRequest";
    Ask(name, messages::Serialize(name, std::wstring(L"4711")));
    EXPECT_EQ(Refusal(),
              L"FetchScenarioParameterSetsRequest is refused: There is no scenario 4711: it is neither an id of a "
              L"scenario nor a file of the scenario directories.");
    Ask(L"FetchScenariosRequest");
    const auto scenarios = Answered<std::vector<ScenarioInfo>>(L"FetchScenariosResponse");
    Ask(name, messages::Serialize(name, scenarios.at(0).id));
    EXPECT_TRUE(Answered<std::vector<ScenarioParameterSetInfo>>(L"FetchScenarioParameterSetsResponse").empty());
}

TEST_F(RequestHandlerTest, InitJobsRequestIsAnsweredWithTheWholeList) {
    AskForJobs(3);
    Ask(L"InitJobsRequest");
    EXPECT_EQ(Answered<std::vector<JobListInfo>>(L"InitJobsResponse").size(), 3U);
}

TEST_F(RequestHandlerTest, DeleteJobsRequestIsAnsweredAndEverybodyIsToldWithAStatusWithoutAName) {
    AskForJobs(2);
    const auto result = Answered<JobEnqueueResult>(L"EnqueueJobsFinish");
    line.WaitFor(L"UpdateProgress");
    Ask(L"DeleteJobsRequest", ControllerCSWrapper::Serialize(L"DeleteJobsRequest", Texts{L"1", L"5"}));
    EXPECT_EQ(Answered<Texts>(L"DeleteJobsResponse"), Texts{L"1"});
    std::vector<JobStatusInfo> told;
    ASSERT_TRUE(ControllerCSWrapper::Deserialize(line.WaitFor(L"UpdateProgress").payload, told));
    ASSERT_EQ(told.size(), 1U);
    EXPECT_EQ(told[0].id, result.jobIds[0].id);
    EXPECT_EQ(told[0].status, unlistedStatus);
}

TEST_F(RequestHandlerTest, InitCultureRequestIsAnsweredWithTheSettingsCulture) {
    Ask(L"InitCultureRequest");
    EXPECT_EQ(Answered<std::wstring>(L"InitCultureResponse"), L"en-US");
}

TEST_F(RequestHandlerTest, FetchLocalizedStringsRequestIsAnsweredWithASectionAsJson) {
    WriteTextFile(directory / L"strings.json", R"({"de-DE":{"Greeting":"Hallo"}})");
    WriteTextFile(directory / L"settings.json", R"({"version":1,"stringResourceFile":"strings.json"})");
    Ask(L"FetchLocalizedStringsRequest", messages::Serialize(L"FetchLocalizedStringsRequest", std::wstring(L"de-DE")));
    EXPECT_EQ(Answered<std::wstring>(L"FetchLocalizedStringsResponse"), LR"({"Greeting":"Hallo"})");
}

TEST_F(RequestHandlerTest, WhatOnlyADialogCouldServeIsRefusedClearly) {
    Ask(L"ShowSettingDialogRequest");
    EXPECT_EQ(Refusal(), L"ShowSettingDialogRequest is refused: this host has no dialogs; change the settings file "
                         L"instead.");
}

TEST_F(RequestHandlerTest, AnUnreadableRequestIsRefusedAndTouchesNoJob) {
    AskForJobs(1);
    for (const wchar_t* name : {L"EnqueueJobs", L"CancelJobs", L"CheckJobStatusRequest", L"DeleteJobsRequest",
                                L"FetchScenarioParameterSetsRequest", L"FetchLocalizedStringsRequest"}) {
        Ask(name, L"no JSON at all");
        EXPECT_EQ(Refusal(), name + std::wstring(L" is refused: its content cannot be read."));
    }
    std::vector<JobListInfo> jobs;
    engine->GetJobList(jobs);
    EXPECT_EQ(jobs.size(), 1U);
}

TEST_F(RequestHandlerTest, ARequestIsAcknowledgedBehindItsAnswerAndBeforeOthersAreTold) {
    answers->Answer({7, L"EnqueueJobs", EnqueueRequest(1), 5});
    EXPECT_EQ(line.SentNames(), Texts());
    answers->SendAll();
    EXPECT_EQ(line.SentNames(), (Texts{L"EnqueueJobsFinish", LineDouble::acknowledged, L"UpdateProgress"}));
    EXPECT_EQ(line.WaitFor(LineDouble::acknowledged).payload, L"5");
}

TEST_F(RequestHandlerTest, EveryRequestIsAnsweredAndAcknowledgedOnce) {
    for (const std::wstring& name : RequestHandler::Names()) {
        answers->Answer({7, name, ControllerCSWrapper::Serialize(name), 5});
        answers->SendAll();
        const Texts sent = line.SentNames();
        EXPECT_EQ(sent.size(), 2U) << testing::PrintToString(name);
        EXPECT_EQ(line.WaitFor(LineDouble::acknowledged).payload, L"5");
        line.WaitFor(sent.front());
    }
}

TEST_F(RequestHandlerTest, WithoutAnExtensionAnswersGoToAll) {
    EngineTransmitter basic(line, nullptr);
    RequestHandler handler(*engine, basic);
    handler.Answer({0, L"InitCultureRequest", ControllerCSWrapper::Serialize(L"InitCultureRequest"), 0});
    handler.SendAll();
    EXPECT_EQ(line.WaitFor(L"InitCultureResponse").peer, 0U);
    EXPECT_EQ(line.SentNames(), Texts());
}

TEST_F(RequestHandlerTest, RowsCanBeFetchedByNameAndInParts) {
    AskForJobs(5);
    std::vector<std::wstring> ids;
    for (const JobListInfo& job : Jobs()) {
        ids.push_back(job.id);
    }
    const auto fetched = [this](const JobsQuery& query) {
        Ask(L"FetchJobsRequest", messages::Serialize(events::fetchJobsRequest, query));
        std::vector<std::wstring> found;
        for (const ListedJob& job : Answered<std::vector<ListedJob>>(L"FetchJobsResponse")) {
            found.push_back(job.id);
        }
        return found;
    };
    using Ids = std::vector<std::wstring>;
    EXPECT_EQ(fetched({}), ids);
    EXPECT_EQ(fetched({{L"4", ids[1], L"9"}}), (Ids{ids[1], ids[3]}));
    EXPECT_EQ(fetched({{}, 0, 2}), (Ids{ids[0], ids[1]}));
    EXPECT_EQ(fetched({{}, 2, 2}), (Ids{ids[2], ids[3]}));
    EXPECT_EQ(fetched({{}, 4, 2}), Ids{ids[4]});
    EXPECT_EQ(fetched({{}, 5, 2}), Ids{});
    std::vector<std::wstring> deleted;
    Ids third = {ids[2]};
    engine->DeleteJobsDurably(third, deleted);
    EXPECT_EQ(fetched({{}, 3, 1}), Ids{ids[3]});
}

TEST_F(RequestHandlerTest, EveryRequestHasAName) {
    EXPECT_EQ(RequestHandler::Names().size(), 23U);
}

} // namespace
