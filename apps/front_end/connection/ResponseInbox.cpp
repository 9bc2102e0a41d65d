#include "front_end/connection/ResponseInbox.h"

#include <algorithm>
#include <set>
#include <utility>

#include "CommonControllerLib/EventTransmitter.h"
#include "formats/Events.h"
#include "formats/JobStates.h"
#include "formats/Messages.h"
#include "front_end/jobs/JobRow.h"

namespace front_end {

template <typename Answer>
bool ResponseInbox::Keep(std::optional<Answer> Answers::*place, const Answer& answer) {
    const std::lock_guard lock(mutex);
    answers.*place = answer;
    arrived.Raise();
    return true;
}

std::vector<JobStatusInfo> ResponseInbox::TakeUpdates() {
    const std::lock_guard lock(mutex);
    updateOfJob.clear();
    return std::exchange(updates, {});
}

bool ResponseInbox::UpdateProgress(const std::vector<JobStatusInfo>& infos) {
    const std::lock_guard lock(mutex);
    for (const JobStatusInfo& info : infos) {
        const auto [entry, isNew] = updateOfJob.try_emplace(info.id, updates.size());
        if (isNew || (info.status == unlistedStatus && IsOver(updates[entry->second].status))) {
            entry->second = updates.size();
            updates.push_back(info);
        } else {
            updates[entry->second] = info;
        }
    }
    arrived.Raise();
    return true;
}

void ResponseInbox::DropUpdatesOf(const std::vector<ListedJob>& jobs) {
    std::set<std::wstring> listed;
    for (const ListedJob& job : jobs) {
        listed.insert(job.id);
    }
    std::erase_if(updates, [&](const JobStatusInfo& update) { return listed.contains(update.id); });
    updateOfJob.clear();
    for (std::size_t index = 0; index < updates.size(); ++index) {
        updateOfJob[updates[index].id] = index;
    }
}

bool ResponseInbox::KeepList(std::vector<ListedJob> jobs, bool isWhole) {
    const std::lock_guard lock(mutex);
    if (isWhole) {
        updates.clear();
        updateOfJob.clear();
    } else if (!updates.empty()) {
        DropUpdatesOf(jobs);
    }
    answers.jobs = std::move(jobs);
    arrived.Raise();
    return true;
}

/// Replaced by `ListKeeper`.
bool ResponseInbox::InitJobsResponse(const std::vector<JobListInfo>& jobs) {
    return KeepList({jobs.begin(), jobs.end()}, true);
}

void ResponseInbox::AddHandlers(EventTransmitter& transmitter) {
    transmitter.AddEventHandler(events::requestRefused.name, &refusalHandler);
    transmitter.AddEventHandler(events::scenarioProblems.name, &scenarioProblemsHandler);
    transmitter.AddEventHandler(events::editJobsFinish.name, &editedHandler);
    transmitter.AddEventHandler(events::queueStateResponse.name, &queueStateHandler);
    transmitter.AddEventHandler(events::initJobsResponse.name, &listHandler);
    transmitter.AddEventHandler(events::fetchJobsResponse.name, &partHandler);
}

void ResponseInbox::RemoveHandlers(EventTransmitter& transmitter) {
    for (const wchar_t* const name :
         {events::requestRefused.name, events::scenarioProblems.name, events::editJobsFinish.name,
          events::queueStateResponse.name, events::initJobsResponse.name, events::fetchJobsResponse.name}) {
        transmitter.AddEventHandler(name, nullptr);
    }
}

bool ResponseInbox::EnqueueJobsFinish(const JobEnqueueResult& result) {
    return Keep(&Answers::enqueued, result);
}

bool ResponseInbox::CancelJobsFinish(const std::vector<JobStatusInfo>& infos) {
    return Keep(&Answers::cancelled, infos);
}

bool ResponseInbox::FetchScenariosResponse(const std::vector<ScenarioInfo>& scenarios) {
    return Keep(&Answers::scenarios, scenarios);
}

bool ResponseInbox::FetchScenarioParameterSetsResponse(const std::vector<ScenarioParameterSetInfo>& parameterSets) {
    return Keep(&Answers::parameterSets, parameterSets);
}

bool ResponseInbox::DeleteJobsResponse(const std::vector<std::wstring>& jobIds) {
    return Keep(&Answers::deleted, jobIds);
}

bool ResponseInbox::FetchLocalizedStringsResponse(const std::wstring& strings) {
    return Keep(&Answers::strings, strings);
}

bool ResponseInbox::InitCultureResponse(const std::wstring& culture) {
    return Keep(&Answers::culture, culture);
}

bool ResponseInbox::TerminateResponse() {
    return Keep(&Answers::terminated, true);
}

bool ResponseInbox::CheckJobStatusResponse(const std::vector<JobStatusInfo>& infos) {
    return Keep(&Answers::statuses, infos);
}

template <typename Answer>
bool ResponseInbox::Keeper<Answer>::operator()(const std::wstring& payload) {
    Answer content;
    return messages::DeserializeContent(payload, content) && inbox.Keep(place, content);
}

bool ResponseInbox::ListKeeper::operator()(const std::wstring& payload) {
    std::vector<ListedJob> jobs;
    return messages::Deserialize(payload, jobs) && inbox.KeepList(std::move(jobs), isWhole);
}

template class ResponseInbox::Keeper<std::wstring>;
template class ResponseInbox::Keeper<std::vector<std::wstring>>;
template class ResponseInbox::Keeper<std::vector<JobStatusInfo>>;
template class ResponseInbox::Keeper<QueueState>;

bool ResponseInbox::FetchServiceListResponse(const std::vector<ServiceInfo>& /*services*/) {
    return false;
}

bool ResponseInbox::FetchUserSettingsResponse(const UserSettingsInfo& /*settings*/) {
    return false;
}

bool ResponseInbox::WriteUserSettingsResponse() {
    return false;
}

bool ResponseInbox::ClearUserSettingsResponse(const UserSettingsInfo& /*settings*/) {
    return false;
}

bool ResponseInbox::ShowSettingDialogResponse() {
    return false;
}

bool ResponseInbox::FetchScenarioEditorPathResponse(const std::wstring& /*path*/) {
    return false;
}

bool ResponseInbox::FetchPreviousStateFilePathResponse(const std::wstring& /*path*/) {
    return false;
}

bool ResponseInbox::FetchThirdPartyNoticesPathResponse(const std::wstring& /*path*/) {
    return false;
}

} // namespace front_end
