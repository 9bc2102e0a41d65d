#include "front_end/connection/RequestProxy.h"

#include "CommonControllerLib/EventTransmitter.h"
#include "controller_plugins/EventTransmitterExtension.h"
#include "formats/Messages.h"

namespace front_end {

template <typename Content>
bool RequestProxy::Send(const events::Event<Content>& event, const std::type_identity_t<Content>& content) {
    return Post(event.name, messages::Serialize(event, content));
}

bool RequestProxy::Post(const std::wstring& name, const std::wstring& payload) {
    return extension != nullptr ? extension->PostEvent(name, payload) : transmitter.SendEvent(name, payload);
}

bool RequestProxy::Enqueue(const ScheduledRequest& request) {
    return Send(events::enqueueJobs, request);
}

bool RequestProxy::EditJobs(const JobsEdit& edit) {
    return Send(events::editJobsRequest, edit);
}

bool RequestProxy::SetQueueState(const QueueState& state) {
    return Send(events::setQueueStateRequest, state);
}

bool RequestProxy::FetchQueueState() {
    return Send(events::fetchQueueStateRequest, {});
}

bool RequestProxy::FetchJobs(const JobsQuery& query) {
    return Send(events::fetchJobsRequest, query);
}

bool RequestProxy::EnqueueJobs(EnqueueJobsInfo& info) {
    return Enqueue({info, {}});
}

bool RequestProxy::CancelJobs(std::vector<std::wstring>& ids) {
    return Send(events::cancelJobs, ids);
}

bool RequestProxy::CancelAllJobs() {
    return Send(events::cancelAllJobs, {});
}

bool RequestProxy::FetchScenariosRequest() {
    return Send(events::fetchScenariosRequest, {});
}

bool RequestProxy::FetchScenarioParameterSetsRequest(const std::wstring& scenarioId) {
    return Send(events::fetchScenarioParameterSetsRequest, scenarioId);
}

bool RequestProxy::InitJobsRequest() {
    return Send(events::initJobsRequest, {});
}

bool RequestProxy::DeleteJobsRequest(std::vector<std::wstring>& ids) {
    return Send(events::deleteJobsRequest, ids);
}

bool RequestProxy::FetchLocalizedStringsRequest(const std::wstring& culture) {
    return Send(events::fetchLocalizedStringsRequest, culture);
}

bool RequestProxy::InitCultureRequest() {
    return Send(events::initCultureRequest, {});
}

bool RequestProxy::TerminateRequest() {
    return Send(events::terminateRequest, {});
}

bool RequestProxy::CheckJobStatusRequest(const std::vector<std::wstring>& ids) {
    return Send(events::checkJobStatusRequest, ids);
}

bool RequestProxy::FetchServiceListRequest() {
    return Send(events::fetchServiceListRequest, {});
}

bool RequestProxy::FetchUserSettingsRequest() {
    return Send(events::fetchUserSettingsRequest, {});
}

bool RequestProxy::WriteUserSettingsRequest(WriteUserSettingsInfo& /*settings*/) {
    return Send(events::writeUserSettingsRequest, {});
}

bool RequestProxy::ClearUserSettingsRequest() {
    return Send(events::clearUserSettingsRequest, {});
}

bool RequestProxy::ShowSettingDialogRequest() {
    return Send(events::showSettingDialogRequest, {});
}

bool RequestProxy::FetchScenarioEditorPathRequest() {
    return Send(events::fetchScenarioEditorPathRequest, {});
}

bool RequestProxy::FetchPreviousStateFilePathRequest() {
    return Send(events::fetchPreviousStateFilePathRequest, {});
}

bool RequestProxy::FetchThirdPartyNoticesPathRequest() {
    return Send(events::fetchThirdPartyNoticesPathRequest, {});
}

} // namespace front_end
