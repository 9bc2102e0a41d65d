#include "CommonControllerLib/CLIOrvelProxy.h"

#include "kit/doubles/RecordingCompanion.h"
#include "kit/doubles/ScriptedTransmitter.h"

#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Events = std::vector<ScriptedTransmitter::Event>;
using Request = std::function<bool(CLIOrvelProxy&)>;

bool Enqueue(CLIOrvelProxy& proxy) {
    EnqueueJobsInfo info;
    info.requestId = L"r1";
    return proxy.EnqueueJobs(info);
}

bool Cancel(CLIOrvelProxy& proxy) {
    std::vector<std::wstring> ids = {L"3", L"a5"};
    return proxy.CancelJobs(ids);
}

bool CancelAll(CLIOrvelProxy& proxy) {
    return proxy.CancelAllJobs();
}

bool CheckStatus(CLIOrvelProxy& proxy) {
    return proxy.CheckJobStatusRequest({L"3", L"x"});
}

const std::vector<Request> workingRequests = {Enqueue, Cancel, CancelAll, CheckStatus};

const std::vector<Request> otherRequests = {
    [](CLIOrvelProxy& proxy) { return proxy.FetchScenariosRequest(); },
    [](CLIOrvelProxy& proxy) { return proxy.FetchScenarioParameterSetsRequest(L"1"); },
    [](CLIOrvelProxy& proxy) { return proxy.InitJobsRequest(); },
    [](CLIOrvelProxy& proxy) {
        std::vector<std::wstring> ids = {L"1"};
        return proxy.DeleteJobsRequest(ids);
    },
    [](CLIOrvelProxy& proxy) { return proxy.FetchLocalizedStringsRequest(L"en-US"); },
    [](CLIOrvelProxy& proxy) { return proxy.InitCultureRequest(); },
    [](CLIOrvelProxy& proxy) { return proxy.TerminateRequest(); },
    [](CLIOrvelProxy& proxy) { return proxy.FetchServiceListRequest(); },
    [](CLIOrvelProxy& proxy) { return proxy.FetchUserSettingsRequest(); },
    [](CLIOrvelProxy& proxy) {
        WriteUserSettingsInfo settings;
        return proxy.WriteUserSettingsRequest(settings);
    },
    [](CLIOrvelProxy& proxy) { return proxy.ClearUserSettingsRequest(); },
    [](CLIOrvelProxy& proxy) { return proxy.ShowSettingDialogRequest(); },
    [](CLIOrvelProxy& proxy) { return proxy.FetchScenarioEditorPathRequest(); },
    [](CLIOrvelProxy& proxy) { return proxy.FetchPreviousStateFilePathRequest(); },
    [](CLIOrvelProxy& proxy) { return proxy.FetchThirdPartyNoticesPathRequest(); },
};

class CLIOrvelProxyTest : public testing::Test {
protected:
    RecordingCompanion companion;
    ScriptedTransmitter transmitter;
};

TEST_F(CLIOrvelProxyTest, SendsEachWorkingRequestUnderItsNameWithItsPayload) {
    CLIOrvelProxy proxy(&transmitter);
    for (const Request& request : workingRequests) {
        EXPECT_TRUE(request(proxy));
    }
    EXPECT_EQ(transmitter.sent, (Events{{L"EnqueueJobs", L"EnqueueJobs: r1"},
                                        {L"CancelJobs", L"CancelJobs: 3,a5"},
                                        {L"CancelAllJobs", L"CancelAllJobs"},
                                        {L"CheckJobStatusRequest", L"CheckJobStatusRequest: 3,x"}}));
}

TEST_F(CLIOrvelProxyTest, AFailedSendGivesTheTransmittersFalse) {
    transmitter.canSend = false;
    CLIOrvelProxy proxy(&transmitter);
    for (const Request& request : workingRequests) {
        EXPECT_FALSE(request(proxy));
    }
    EXPECT_EQ(transmitter.sent.size(), workingRequests.size());
}

TEST_F(CLIOrvelProxyTest, WithoutATransmitterTheWorkingRequestsAreFalseAndTheOthersTrue) {
    CLIOrvelProxy proxy(nullptr);
    for (const Request& request : workingRequests) {
        EXPECT_FALSE(request(proxy));
    }
    for (const Request& request : otherRequests) {
        EXPECT_TRUE(request(proxy));
    }
}

TEST_F(CLIOrvelProxyTest, TheOtherRequestsSendNothingAndAreTrue) {
    transmitter.canSend = false;
    CLIOrvelProxy proxy(&transmitter);
    for (const Request& request : otherRequests) {
        EXPECT_TRUE(request(proxy));
    }
    EXPECT_TRUE(transmitter.sent.empty());
}

TEST_F(CLIOrvelProxyTest, ACopySendsThroughTheSameTransmitter) {
    const CLIOrvelProxy original(&transmitter);
    CLIOrvelProxy copy(original);
    CLIOrvelProxy assigned(nullptr);
    assigned = original;
    EXPECT_TRUE(CancelAll(copy));
    EXPECT_TRUE(CancelAll(assigned));
    EXPECT_EQ(transmitter.sent, (Events{{L"CancelAllJobs", L"CancelAllJobs"}, {L"CancelAllJobs", L"CancelAllJobs"}}));
}

} // namespace
