#include "controller_cli/RequestProxy.h"

#include "CommonControllerLib/EventTransmitter.h"
#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "controller_plugins/EventTransmitterExtension.h"
#include "formats/Messages.h"

namespace controller_cli {

template <typename... Content>
bool RequestProxy::Send(const std::wstring& name, const Content&... content) {
    return Post(name, ControllerCSWrapper::Serialize(name, content...));
}

bool RequestProxy::SendText(const std::wstring& name, const std::wstring& text) {
    return Post(name, messages::Serialize(name, text));
}

bool RequestProxy::Post(const std::wstring& name, const std::wstring& payload) {
    return extension != nullptr ? extension->PostEvent(name, payload) : transmitter.SendEvent(name, payload);
}

bool RequestProxy::EnqueueJobs(EnqueueJobsInfo& info) {
    return Send(L"EnqueueJobs", info);
}

bool RequestProxy::CancelJobs(std::vector<std::wstring>& ids) {
    return Send(L"CancelJobs", ids);
}

bool RequestProxy::CancelAllJobs() {
    return Send(L"CancelAllJobs");
}

bool RequestProxy::FetchScenariosRequest() {
    return Send(L"FetchScenariosRequest");
}

bool RequestProxy::FetchScenarioParameterSetsRequest(const std::wstring& scenarioId) {
    return SendText(L"FetchScenarioParameterSetsRequest", scenarioId);
}

bool RequestProxy::InitJobsRequest() {
    return Send(L"InitJobsRequest");
}

bool RequestProxy::DeleteJobsRequest(std::vector<std::wstring>& ids) {
    return Send(L"DeleteJobsRequest", ids);
}

bool RequestProxy::FetchLocalizedStringsRequest(const std::wstring& culture) {
    return SendText(L"FetchLocalizedStringsRequest", culture);
}

bool RequestProxy::InitCultureRequest() {
    return Send(L"InitCultureRequest");
}

bool RequestProxy::TerminateRequest() {
    return Send(L"TerminateRequest");
}

bool RequestProxy::CheckJobStatusRequest(const std::vector<std::wstring>& ids) {
    return Send(L"CheckJobStatusRequest", ids);
}

bool RequestProxy::FetchServiceListRequest() {
    return Send(L"FetchServiceListRequest");
}

bool RequestProxy::FetchUserSettingsRequest() {
    return Send(L"FetchUserSettingsRequest");
}

bool RequestProxy::WriteUserSettingsRequest(WriteUserSettingsInfo& /*settings*/) {
    return Send(L"WriteUserSettingsRequest");
}

bool RequestProxy::ClearUserSettingsRequest() {
    return Send(L"ClearUserSettingsRequest");
}

bool RequestProxy::ShowSettingDialogRequest() {
    return Send(L"ShowSettingDialogRequest");
}

bool RequestProxy::FetchScenarioEditorPathRequest() {
    return Send(L"FetchScenarioEditorPathRequest");
}

bool RequestProxy::FetchPreviousStateFilePathRequest() {
    return Send(L"FetchPreviousStateFilePathRequest");
}

bool RequestProxy::FetchThirdPartyNoticesPathRequest() {
    return Send(L"FetchThirdPartyNoticesPathRequest");
}

} // namespace controller_cli
