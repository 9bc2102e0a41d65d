#include "CommonControllerLib/CLIOrvelProxy.h"

#include "CommonControllerLib/EventTransmitter.h"
#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "formats/Events.h"

CLIOrvelProxy::CLIOrvelProxy(EventTransmitter* eventTransmitter) : transmitter(eventTransmitter) {}

CLIOrvelProxy::CLIOrvelProxy(const CLIOrvelProxy& other) = default;

CLIOrvelProxy& CLIOrvelProxy::operator=(const CLIOrvelProxy& other) = default;

CLIOrvelProxy::~CLIOrvelProxy() = default;

template <typename... Content>
bool CLIOrvelProxy::Send(const std::wstring& name, const Content&... content) const {
    return transmitter != nullptr && transmitter->SendEvent(name, ControllerCSWrapper::Serialize(name, content...));
}

bool CLIOrvelProxy::EnqueueJobs(EnqueueJobsInfo& info) {
    return Send(events::enqueueJobs.name, info);
}

bool CLIOrvelProxy::CancelJobs(std::vector<std::wstring>& ids) {
    return Send(events::cancelJobs.name, ids);
}

bool CLIOrvelProxy::CancelAllJobs() {
    return Send(events::cancelAllJobs.name);
}

bool CLIOrvelProxy::CheckJobStatusRequest(const std::vector<std::wstring>& ids) {
    return Send(events::checkJobStatusRequest.name, ids);
}

bool CLIOrvelProxy::FetchScenariosRequest() {
    return true;
}

bool CLIOrvelProxy::FetchScenarioParameterSetsRequest(const std::wstring& /*scenarioId*/) {
    return true;
}

bool CLIOrvelProxy::InitJobsRequest() {
    return true;
}

bool CLIOrvelProxy::DeleteJobsRequest(std::vector<std::wstring>& /*ids*/) {
    return true;
}

bool CLIOrvelProxy::FetchLocalizedStringsRequest(const std::wstring& /*culture*/) {
    return true;
}

bool CLIOrvelProxy::InitCultureRequest() {
    return true;
}

bool CLIOrvelProxy::TerminateRequest() {
    return true;
}

bool CLIOrvelProxy::FetchServiceListRequest() {
    return true;
}

bool CLIOrvelProxy::FetchUserSettingsRequest() {
    return true;
}

bool CLIOrvelProxy::WriteUserSettingsRequest(WriteUserSettingsInfo& /*settings*/) {
    return true;
}

bool CLIOrvelProxy::ClearUserSettingsRequest() {
    return true;
}

bool CLIOrvelProxy::ShowSettingDialogRequest() {
    return true;
}

bool CLIOrvelProxy::FetchScenarioEditorPathRequest() {
    return true;
}

bool CLIOrvelProxy::FetchPreviousStateFilePathRequest() {
    return true;
}

bool CLIOrvelProxy::FetchThirdPartyNoticesPathRequest() {
    return true;
}
