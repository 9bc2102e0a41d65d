#include "CommonControllerLib/ControllerPresenterAbs.h"

#include "CommonControllerLib/ResponseFunctors.h"
#include "kit/doubles/RecordingCompanion.h"
#include "kit/doubles/ScriptedTransmitter.h"

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Texts = std::vector<std::wstring>;

/// Records each response with a member that identifies its value, and returns a scripted result.
class RecordingPresenter final : public ControllerPresenterAbs {
public:
    Texts answers;
    bool result = true;

    bool EnqueueJobsFinish(const JobEnqueueResult& value) override {
        return Note(L"EnqueueJobsFinish " + value.requestId);
    }
    bool UpdateProgress(const std::vector<JobStatusInfo>& infos) override { return Note(L"UpdateProgress", infos); }
    bool CancelJobsFinish(const std::vector<JobStatusInfo>& infos) override { return Note(L"CancelJobsFinish", infos); }
    bool FetchScenariosResponse(const std::vector<ScenarioInfo>& scenarios) override {
        return Note(L"FetchScenariosResponse", scenarios);
    }
    bool FetchScenarioParameterSetsResponse(const std::vector<ScenarioParameterSetInfo>& sets) override {
        return Note(L"FetchScenarioParameterSetsResponse", sets);
    }
    bool InitJobsResponse(const std::vector<JobListInfo>& jobs) override { return Note(L"InitJobsResponse", jobs); }
    bool DeleteJobsResponse(const Texts& ids) override { return Note(L"DeleteJobsResponse " + ids.at(0)); }
    bool FetchLocalizedStringsResponse(const std::wstring& text) override {
        return Note(L"FetchLocalizedStringsResponse " + text);
    }
    bool InitCultureResponse(const std::wstring& text) override { return Note(L"InitCultureResponse " + text); }
    bool TerminateResponse() override { return Note(L"TerminateResponse"); }
    bool FetchServiceListResponse(const std::vector<ServiceInfo>&) override { return Note(L"unexpected"); }
    bool FetchUserSettingsResponse(const UserSettingsInfo&) override { return Note(L"unexpected"); }
    bool WriteUserSettingsResponse() override { return Note(L"unexpected"); }
    bool ClearUserSettingsResponse(const UserSettingsInfo&) override { return Note(L"unexpected"); }
    bool ShowSettingDialogResponse() override { return Note(L"unexpected"); }
    bool FetchScenarioEditorPathResponse(const std::wstring&) override { return Note(L"unexpected"); }
    bool FetchPreviousStateFilePathResponse(const std::wstring&) override { return Note(L"unexpected"); }
    bool CheckJobStatusResponse(const std::vector<JobStatusInfo>& infos) override {
        return Note(L"CheckJobStatusResponse", infos);
    }
    bool FetchThirdPartyNoticesPathResponse(const std::wstring&) override { return Note(L"unexpected"); }

private:
    bool Note(const std::wstring& answer) {
        answers.push_back(answer);
        return result;
    }
    template <typename Record>
    bool Note(const std::wstring& answer, const std::vector<Record>& records) {
        return Note(answer + L" " + records.at(0).id);
    }
};

template <typename Record>
std::vector<Record> OneWithId(const std::wstring& id) {
    Record record = {};
    record.id = id;
    return {record};
}

class ControllerPresenterAbsTest : public testing::Test {
protected:
    ControllerPresenterAbsTest() { presenter->SetEventTransmitter(&transmitter); }

    RecordingCompanion companion;
    ScriptedTransmitter transmitter;
    std::unique_ptr<RecordingPresenter> presenter = std::make_unique<RecordingPresenter>();
};

const Texts answerNames = {L"FetchScenariosResponse",
                           L"FetchScenarioParameterSetsResponse",
                           L"InitJobsResponse",
                           L"DeleteJobsResponse",
                           L"FetchLocalizedStringsResponse",
                           L"InitCultureResponse",
                           L"TerminateResponse",
                           L"EnqueueJobsFinish",
                           L"CancelJobsFinish",
                           L"UpdateProgress",
                           L"CheckJobStatusResponse"};

TEST_F(ControllerPresenterAbsTest, RegistersElevenHandlersInOrder) {
    EXPECT_EQ(transmitter.registered, answerNames);
}

TEST_F(ControllerPresenterAbsTest, ANullTransmitterRegistersNothingAndDoesNotFail) {
    presenter->SetEventTransmitter(nullptr);
    EXPECT_EQ(transmitter.registered.size(), answerNames.size());
}

TEST_F(ControllerPresenterAbsTest, TheSameHandlersAreRegisteredWithEveryTransmitter) {
    ScriptedTransmitter second;
    presenter->SetEventTransmitter(&second);
    EXPECT_TRUE(second.Deliver(L"TerminateResponse", L""));
    EXPECT_TRUE(transmitter.Deliver(L"TerminateResponse", L""));
    EXPECT_EQ(presenter->answers, (Texts{L"TerminateResponse", L"TerminateResponse"}));
}

TEST_F(ControllerPresenterAbsTest, EachAnswerReachesTheOperationOfItsName) {
    companion.messages.Add(L"scenarios", OneWithId<ScenarioInfo>(L"s1"));
    companion.messages.Add(L"sets", OneWithId<ScenarioParameterSetInfo>(L"p1"));
    companion.messages.Add(L"jobs", OneWithId<JobListInfo>(L"j1"));
    companion.messages.Add(L"ids", Texts{L"d1"});
    companion.messages.Add(L"text", std::wstring(L"t1"));
    companion.messages.Add(L"result", JobEnqueueResult{{}, L"r1", {}});
    companion.messages.Add(L"statuses", OneWithId<JobStatusInfo>(L"u1"));
    const Texts payloads = {L"scenarios", L"sets",   L"jobs",     L"ids",      L"text",    L"text",
                            L"",          L"result", L"statuses", L"statuses", L"statuses"};
    for (std::size_t index = 0; index < answerNames.size(); ++index) {
        EXPECT_TRUE(transmitter.Deliver(answerNames[index], payloads[index]));
    }
    EXPECT_EQ(presenter->answers,
              (Texts{L"FetchScenariosResponse s1", L"FetchScenarioParameterSetsResponse p1", L"InitJobsResponse j1",
                     L"DeleteJobsResponse d1", L"FetchLocalizedStringsResponse t1", L"InitCultureResponse t1",
                     L"TerminateResponse", L"EnqueueJobsFinish r1", L"CancelJobsFinish u1", L"UpdateProgress u1",
                     L"CheckJobStatusResponse u1"}));
}

TEST_F(ControllerPresenterAbsTest, ThePresentersResultIsTheHandlers) {
    companion.messages.Add(L"statuses", OneWithId<JobStatusInfo>(L"u1"));
    presenter->result = false;
    EXPECT_FALSE(transmitter.Deliver(L"UpdateProgress", L"statuses"));
    EXPECT_FALSE(transmitter.Deliver(L"TerminateResponse", L""));
    EXPECT_EQ(presenter->answers.size(), 2U);
}

TEST_F(ControllerPresenterAbsTest, AMalformedPayloadIsFalseAndLeavesThePresenterUntouched) {
    for (const std::wstring& name : answerNames) {
        if (name != L"TerminateResponse") {
            EXPECT_FALSE(transmitter.Deliver(name, L"malformed"));
        }
    }
    EXPECT_TRUE(presenter->answers.empty());
    EXPECT_TRUE(companion.Events().empty());
}

TEST_F(ControllerPresenterAbsTest, ATerminateResponseWithAnyPayloadCallsThePresenterOnce) {
    EXPECT_TRUE(transmitter.Deliver(L"TerminateResponse", L"{malformed"));
    EXPECT_EQ(presenter->answers, Texts{L"TerminateResponse"});
}

TEST_F(ControllerPresenterAbsTest, LeavingATransmitterTakesEveryHandlerAway) {
    transmitter.registered.clear();
    presenter->LeaveEventTransmitter(&transmitter);
    EXPECT_EQ(transmitter.registered, answerNames);
    EXPECT_FALSE(transmitter.HasHandlers());
    presenter->LeaveEventTransmitter(nullptr);
}

/// Holds a presenter that is never destroyed: of two presenters that share handlers, only one may be.
class CopyWithoutEnd {
public:
    explicit CopyWithoutEnd(const RecordingPresenter& original) { std::construct_at(&presenter, original); }
    ~CopyWithoutEnd() {}
    CopyWithoutEnd(const CopyWithoutEnd&) = delete;
    CopyWithoutEnd& operator=(const CopyWithoutEnd&) = delete;

    RecordingPresenter& operator*() { return presenter; }

private:
    union {
        RecordingPresenter presenter;
    };
};

class HandlersOf {
public:
    explicit HandlersOf(ControllerPresenterAbs& presenter) {
        transmitter.onRegister = [this](const std::wstring&, CallbackFunctor* handler) { handlers.push_back(handler); };
        presenter.SetEventTransmitter(&transmitter);
    }

    ScriptedTransmitter transmitter;
    std::vector<CallbackFunctor*> handlers;
};

TEST_F(ControllerPresenterAbsTest, ACopySharesTheHandlersWhichStayBoundToTheFirstPresenter) {
    CopyWithoutEnd copy(*presenter);
    HandlersOf copied(*copy);
    EXPECT_EQ(copied.handlers, HandlersOf(*presenter).handlers);
    EXPECT_TRUE(copied.transmitter.Deliver(L"TerminateResponse", L""));
    EXPECT_EQ(presenter->answers, Texts{L"TerminateResponse"});
    EXPECT_TRUE((*copy).answers.empty());
}

TEST_F(ControllerPresenterAbsTest, AnAssignedPresenterSharesTheHandlersOfTheOther) {
    RecordingPresenter other;
    const HandlersOf others(other);
    CopyWithoutEnd assigned(other);
    *assigned = *presenter;
    HandlersOf shared(*assigned);
    EXPECT_EQ(shared.handlers, HandlersOf(*presenter).handlers);
    EXPECT_NE(shared.handlers, others.handlers);
    EXPECT_TRUE(shared.transmitter.Deliver(L"TerminateResponse", L""));
    EXPECT_EQ(presenter->answers, Texts{L"TerminateResponse"});
}

// A leak checker verifies that the other ten are released.
TEST_F(ControllerPresenterAbsTest, TheHandlerOfCancelJobsFinishOutlivesThePresenter) {
    presenter.reset();
    EXPECT_FALSE(transmitter.Deliver(L"CancelJobsFinish", L"malformed"));
}

} // namespace
