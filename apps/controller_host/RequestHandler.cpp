#include "controller_host/RequestHandler.h"

#include <algorithm>

#include "CommonControllerLib/ControllerLogManager.h"
#include "CommonControllerLib/StringManager.h"
#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "controller_host/EnqueueWithReasons.h"
#include "fault_points/FaultPoint.h"
#include "formats/Messages.h"
#include "services/Settings.h"

const std::vector<RequestHandler::NamedOperation>& RequestHandler::Operations() {
    static const std::vector<NamedOperation> operations{
        {L"EnqueueJobs", &RequestHandler::EnqueueJobs},
        {L"CancelJobs", &RequestHandler::CancelJobs},
        {L"CancelAllJobs", &RequestHandler::CancelAllJobs},
        {L"CheckJobStatusRequest", &RequestHandler::CheckJobStatus},
        {L"FetchScenariosRequest", &RequestHandler::FetchScenarios},
        {L"FetchScenarioParameterSetsRequest", &RequestHandler::FetchScenarioParameterSets},
        {L"InitJobsRequest", &RequestHandler::InitJobs},
        {L"DeleteJobsRequest", &RequestHandler::DeleteJobs},
        {L"FetchLocalizedStringsRequest", &RequestHandler::FetchLocalizedStrings},
        {L"InitCultureRequest", &RequestHandler::InitCulture},
        {L"TerminateRequest", &RequestHandler::Terminate},
        {L"FetchServiceListRequest", &RequestHandler::RefuseForWantOfDialogs},
        {L"FetchUserSettingsRequest", &RequestHandler::RefuseForWantOfDialogs},
        {L"WriteUserSettingsRequest", &RequestHandler::RefuseForWantOfDialogs},
        {L"ClearUserSettingsRequest", &RequestHandler::RefuseForWantOfDialogs},
        {L"ShowSettingDialogRequest", &RequestHandler::RefuseForWantOfDialogs},
        {L"FetchScenarioEditorPathRequest", &RequestHandler::RefuseForWantOfDialogs},
        {L"FetchPreviousStateFilePathRequest", &RequestHandler::RefuseForWantOfDialogs},
        {L"FetchThirdPartyNoticesPathRequest", &RequestHandler::RefuseForWantOfDialogs},
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
    if (!changed.empty()) {
        transmitter.Broadcast(L"UpdateProgress", messages::Serialize(L"UpdateProgress", changed));
        fault_points::ReachFaultPoint(fault_points::FaultPoint::ChangesTold);
    }
}

void RequestHandler::EnqueueJobs(const Request& request) {
    EnqueueJobsInfo info;
    if (!messages::Deserialize(request.payload, info)) {
        Refuse(request, L"its content cannot be read.");
        return;
    }
    const JobEnqueueResult result = EnqueueWithReasons(engine, info);
    Send(request, L"EnqueueJobsFinish", messages::Serialize(L"EnqueueJobsFinish", result));
    Broadcast(engine.StatusOf(result.jobIds));
}

void RequestHandler::CancelJobs(const Request& request) {
    std::vector<std::wstring> ids;
    if (Read(request, ids)) {
        std::vector<JobStatusInfo> cancelled;
        engine.CancelJobs(ids, cancelled, false);
        Send(request, L"CancelJobsFinish", messages::Serialize(L"CancelJobsFinish", cancelled));
        Broadcast(cancelled);
    }
}

void RequestHandler::CancelAllJobs(const Request& request) {
    std::vector<JobStatusInfo> cancelled;
    engine.CancelAllJobs(cancelled, false);
    Send(request, L"CancelJobsFinish", messages::Serialize(L"CancelJobsFinish", cancelled));
    Broadcast(cancelled);
}

void RequestHandler::CheckJobStatus(const Request& request) {
    std::vector<std::wstring> ids;
    if (Read(request, ids)) {
        std::vector<JobStatusInfo> statuses;
        engine.CheckJobStatus(ids, statuses);
        Send(request, L"CheckJobStatusResponse", messages::Serialize(L"CheckJobStatusResponse", statuses));
    }
}

void RequestHandler::FetchScenarios(const Request& request) {
    const std::vector<ScenarioInfo> scenarios = engine.UpdateCatalogue();
    if (const auto problems = engine.ScenarioProblems(); !problems.empty()) {
        Send(request, L"ScenarioProblems", ControllerCSWrapper::Serialize(L"ScenarioProblems", problems));
    }
    Send(request, L"FetchScenariosResponse", messages::Serialize(L"FetchScenariosResponse", scenarios));
}

void RequestHandler::FetchScenarioParameterSets(const Request& request) {
    std::wstring scenarioId;
    if (!Read(request, scenarioId)) {
        return;
    }
    std::vector<ScenarioParameterSetInfo> sets;
    if (const std::wstring problem = engine.ReadParameterSets(scenarioId, sets); !problem.empty()) {
        Refuse(request, problem);
        return;
    }
    Send(request, L"FetchScenarioParameterSetsResponse",
         messages::Serialize(L"FetchScenarioParameterSetsResponse", sets));
}

void RequestHandler::InitJobs(const Request& request) {
    std::vector<JobListInfo> jobs;
    engine.GetJobList(jobs);
    Send(request, L"InitJobsResponse", ControllerCSWrapper::Serialize(L"InitJobsResponse", jobs));
}

void RequestHandler::DeleteJobs(const Request& request) {
    std::vector<std::wstring> ids;
    if (Read(request, ids)) {
        std::vector<JobListInfo> before;
        engine.GetJobList(before);
        std::vector<std::wstring> deleted;
        engine.DeleteJobsDurably(ids, deleted);
        Send(request, L"DeleteJobsResponse", ControllerCSWrapper::Serialize(L"DeleteJobsResponse", deleted));
        Broadcast(engine.NoLongerListed(before));
    }
}

void RequestHandler::FetchLocalizedStrings(const Request& request) {
    std::wstring culture;
    if (Read(request, culture)) {
        const StringManager strings(settings::Current()->stringResourceFile);
        std::wstring section;
        // A culture without texts has the empty section.
        (void)strings.GetLocalizedString(L"", section, culture);
        Send(request, L"FetchLocalizedStringsResponse", messages::Serialize(L"FetchLocalizedStringsResponse", section));
    }
}

void RequestHandler::InitCulture(const Request& request) {
    Send(request, L"InitCultureResponse",
         messages::Serialize(L"InitCultureResponse", ControllerCSWrapper::GetCultureInfo()));
}

void RequestHandler::Terminate(const Request& request) {
    endRequested = true;
    Send(request, L"TerminateResponse", ControllerCSWrapper::Serialize(L"TerminateResponse"));
}

void RequestHandler::RefuseForWantOfDialogs(const Request& request) {
    Refuse(request, L"this host has no dialogs; change the settings file instead.");
}

template <class Value>
bool RequestHandler::Read(const Request& request, Value& value) {
    if (ControllerCSWrapper::Deserialize(request.payload, value)) {
        return true;
    }
    Refuse(request, L"its content cannot be read.");
    return false;
}

void RequestHandler::Send(const Request& request, const std::wstring& name, const std::wstring& payload) {
    fault_points::ReachFaultPoint(fault_points::FaultPoint::AnswerToBeSent);
    if (!transmitter.SendTo(request.peer, name, payload)) {
        ControllerLogManager::DebugLog(L"The front end that sent " + request.name +
                                       L" is gone; its answer is dropped.");
    }
    fault_points::ReachFaultPoint(fault_points::FaultPoint::AnswerSent);
    transmitter.Acknowledge(request.acknowledgement);
}

void RequestHandler::Refuse(const Request& request, const std::wstring& why) {
    const std::wstring text = request.name + L" is refused: " + why;
    ControllerLogManager::WarnLog(text);
    Send(request, L"RequestRefused", messages::Serialize(L"RequestRefused", text));
}
