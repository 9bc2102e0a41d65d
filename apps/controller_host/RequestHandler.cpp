#include "controller_host/RequestHandler.h"

#include <utility>

#include "CommonControllerLib/ControllerLogManager.h"
#include "CommonControllerLib/StringManager.h"
#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "controller_host/EnqueueWithReasons.h"
#include "fault_points/FaultPoint.h"
#include "formats/Messages.h"
#include "services/Settings.h"

namespace {

/// Limits the memory of long answers that wait for each other. Units: elements of the wide text.
constexpr std::size_t longestQueue = std::size_t{1} << 22;

} // namespace

const std::vector<RequestHandler::NamedOperation>& RequestHandler::Operations() {
    static const std::vector<NamedOperation> operations{
        {events::enqueueJobs.name, &RequestHandler::EnqueueJobs},
        {events::cancelJobs.name, &RequestHandler::CancelJobs},
        {events::cancelAllJobs.name, &RequestHandler::CancelAllJobs},
        {events::checkJobStatusRequest.name, &RequestHandler::CheckJobStatus},
        {events::fetchScenariosRequest.name, &RequestHandler::FetchScenarios},
        {events::fetchScenarioParameterSetsRequest.name, &RequestHandler::FetchScenarioParameterSets},
        {events::initJobsRequest.name, &RequestHandler::InitJobs},
        {events::deleteJobsRequest.name, &RequestHandler::DeleteJobs},
        {events::editJobsRequest.name, &RequestHandler::EditJobs},
        {events::setQueueStateRequest.name, &RequestHandler::SetQueueState},
        {events::fetchJobsRequest.name, &RequestHandler::FetchJobs},
        {events::fetchQueueStateRequest.name, &RequestHandler::FetchQueueState},
        {events::fetchLocalizedStringsRequest.name, &RequestHandler::FetchLocalizedStrings},
        {events::initCultureRequest.name, &RequestHandler::InitCulture},
        {events::terminateRequest.name, &RequestHandler::Terminate},
        {events::fetchServiceListRequest.name, &RequestHandler::RejectUnsupported},
        {events::fetchUserSettingsRequest.name, &RequestHandler::RejectUnsupported},
        {events::writeUserSettingsRequest.name, &RequestHandler::RejectUnsupported},
        {events::clearUserSettingsRequest.name, &RequestHandler::RejectUnsupported},
        {events::showSettingDialogRequest.name, &RequestHandler::RejectUnsupported},
        {events::fetchScenarioEditorPathRequest.name, &RequestHandler::RejectUnsupported},
        {events::fetchPreviousStateFilePathRequest.name, &RequestHandler::RejectUnsupported},
        {events::fetchThirdPartyNoticesPathRequest.name, &RequestHandler::RejectUnsupported},
    };
    return operations;
}

std::vector<std::wstring> RequestHandler::Names() {
    std::vector<std::wstring> names;
    for (const NamedOperation& entry : Operations()) {
        names.emplace_back(entry.name);
    }
    return names;
}

void RequestHandler::Answer(const Request& request) {
    for (const NamedOperation& entry : Operations()) {
        if (request.name == entry.name) {
            (this->*entry.operation)(request);
            return;
        }
    }
    Refuse(request, L"this host does not know the request.");
}

void RequestHandler::Broadcast(const std::vector<JobStatusInfo>& changed) {
    QueueBroadcast(changed);
    SendAll();
}

void RequestHandler::QueueBroadcast(const std::vector<JobStatusInfo>& changed) {
    if (!changed.empty()) {
        queued.push_back([this, payload = messages::Serialize(events::updateProgress, changed)] {
            transmitter.Broadcast(events::updateProgress.name, payload);
            fault_points::ReachFaultPoint(fault_points::FaultPoint::ChangesTold);
        });
    }
}

void RequestHandler::SendAll() {
    if (std::exchange(hasAnswers, false)) {
        engine.FlushJobList();
    }
    queuedSize = 0;
    for (const auto& send : std::exchange(queued, {})) {
        send();
    }
}

void RequestHandler::EnqueueJobs(const Request& request) {
    ScheduledRequest info;
    if (!Read(request, events::enqueueJobs, info)) {
        return;
    }
    const JobEnqueueResult result = EnqueueWithReasons(engine, info);
    Send(request, events::enqueueJobsFinish, result);
    QueueBroadcast(engine.StatusOf(result.jobIds));
}

void RequestHandler::CancelJobs(const Request& request) {
    std::vector<std::wstring> ids;
    if (Read(request, events::cancelJobs, ids)) {
        std::vector<JobStatusInfo> cancelled;
        engine.CancelJobs(ids, cancelled, false);
        Send(request, events::cancelJobsFinish, cancelled);
        QueueBroadcast(cancelled);
    }
}

void RequestHandler::CancelAllJobs(const Request& request) {
    std::vector<JobStatusInfo> cancelled;
    engine.CancelAllJobs(cancelled, false);
    Send(request, events::cancelJobsFinish, cancelled);
    QueueBroadcast(cancelled);
}

void RequestHandler::CheckJobStatus(const Request& request) {
    std::vector<std::wstring> ids;
    if (Read(request, events::checkJobStatusRequest, ids)) {
        std::vector<JobStatusInfo> statuses;
        engine.CheckJobStatus(ids, statuses);
        Send(request, events::checkJobStatusResponse, statuses);
    }
}

void RequestHandler::FetchScenarios(const Request& request) {
    const std::vector<ScenarioInfo> scenarios = engine.UpdateCatalogue();
    if (const auto problems = engine.ScenarioProblems(); !problems.empty()) {
        Send(request, events::scenarioProblems, problems);
    }
    Send(request, events::fetchScenariosResponse, scenarios);
}

void RequestHandler::FetchScenarioParameterSets(const Request& request) {
    std::wstring scenarioId;
    if (!Read(request, events::fetchScenarioParameterSetsRequest, scenarioId)) {
        return;
    }
    std::vector<ScenarioParameterSetInfo> sets;
    if (std::wstring problem; !engine.ReadParameterSets(scenarioId, sets, problem)) {
        Refuse(request, problem);
        return;
    }
    Send(request, events::fetchScenarioParameterSetsResponse, sets);
}

void RequestHandler::InitJobs(const Request& request) {
    Send(request, events::initJobsResponse, engine.Rows());
}

void RequestHandler::FetchJobs(const Request& request) {
    JobsQuery query;
    if (Read(request, events::fetchJobsRequest, query)) {
        Send(request, events::fetchJobsResponse, engine.Rows(query));
    }
}

void RequestHandler::DeleteJobs(const Request& request) {
    std::vector<std::wstring> ids;
    if (Read(request, events::deleteJobsRequest, ids)) {
        const std::vector<JobListInfo> before = engine.Listed(ids);
        std::vector<std::wstring> deleted;
        engine.DeleteJobsDurably(ids, deleted);
        Send(request, events::deleteJobsResponse, deleted);
        QueueBroadcast(engine.NoLongerListed(before));
    }
}

void RequestHandler::EditJobs(const Request& request) {
    JobsEdit edit;
    if (!Read(request, events::editJobsRequest, edit)) {
        return;
    }
    std::vector<JobStatusInfo> edited;
    if (std::wstring problem; !engine.EditJobs(edit, edited, problem)) {
        Refuse(request, problem);
        return;
    }
    Send(request, events::editJobsFinish, edited);
    QueueBroadcast(edited);
}

void RequestHandler::SetQueueState(const Request& request) {
    QueueState state;
    if (!Read(request, events::setQueueStateRequest, state)) {
        return;
    }
    if (std::wstring problem; !engine.SetState(state, problem)) {
        Refuse(request, problem);
        return;
    }
    FetchQueueState(request);
}

void RequestHandler::FetchQueueState(const Request& request) {
    Send(request, events::queueStateResponse, engine.State());
}

void RequestHandler::FetchLocalizedStrings(const Request& request) {
    std::wstring culture;
    if (Read(request, events::fetchLocalizedStringsRequest, culture)) {
        const StringManager strings(settings::Current()->stringResourceFile);
        std::wstring section;
        // For a culture without texts, `section` stays empty.
        (void)strings.GetLocalizedString(L"", section, culture);
        Send(request, events::fetchLocalizedStringsResponse, section);
    }
}

void RequestHandler::InitCulture(const Request& request) {
    Send(request, events::initCultureResponse, ControllerCSWrapper::GetCultureInfo());
}

void RequestHandler::Terminate(const Request& request) {
    endRequested = true;
    Send(request, events::terminateResponse, {});
}

void RequestHandler::RejectUnsupported(const Request& request) {
    Refuse(request, L"this host has no dialogs; change the settings file instead.");
}

template <typename Content>
bool RequestHandler::Read(const Request& request, const events::Event<Content>& event, Content& content) {
    if (messages::Deserialize(event, request.payload, content)) {
        return true;
    }
    Refuse(request, L"its content cannot be read.");
    return false;
}

template <typename Content>
void RequestHandler::Send(const Request& request, const events::Event<Content>& event,
                          const std::type_identity_t<Content>& content) {
    std::wstring payload = messages::Serialize(event, content);
    hasAnswers = true;
    queuedSize += payload.size();
    queued.push_back([this, peer = request.peer, from = request.name, acknowledgement = request.acknowledgement,
                      name = event.name, payload = std::move(payload)] {
        fault_points::ReachFaultPoint(fault_points::FaultPoint::AnswerToBeSent);
        if (!transmitter.SendTo(peer, name, payload)) {
            ControllerLogManager::DebugLog(L"The front end that sent " + from + L" is gone; its answer is dropped.");
        }
        fault_points::ReachFaultPoint(fault_points::FaultPoint::AnswerSent);
        transmitter.Acknowledge(acknowledgement);
    });
    if (queuedSize > longestQueue) {
        SendAll();
    }
}

void RequestHandler::Refuse(const Request& request, const std::wstring& why) {
    const std::wstring text = request.name + L" is refused: " + why;
    ControllerLogManager::WarnLog(text);
    Send(request, events::requestRefused, text);
}
