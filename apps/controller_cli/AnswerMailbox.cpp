#include "controller_cli/AnswerMailbox.h"

#include <utility>

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "controller_cli/JobView.h"

namespace controller_cli {

template <typename Answer>
bool AnswerMailbox::Keep(std::optional<Answer> Answers::*place, const Answer& answer) {
    const std::lock_guard lock(mutex);
    answers.*place = answer;
    arrived.Raise();
    return true;
}

std::vector<JobStatusInfo> AnswerMailbox::TakeUpdates() {
    const std::lock_guard lock(mutex);
    updateOfJob.clear();
    return std::exchange(updates, {});
}

bool AnswerMailbox::UpdateProgress(const std::vector<JobStatusInfo>& infos) {
    const std::lock_guard lock(mutex);
    for (const JobStatusInfo& info : infos) {
        const auto [entry, isNew] = updateOfJob.try_emplace(info.id, updates.size());
        if (isNew || (info.status == deletedStatus && HasEnded(updates[entry->second].status))) {
            entry->second = updates.size();
            updates.push_back(info);
        } else {
            updates[entry->second] = info;
        }
    }
    arrived.Raise();
    return true;
}

/// What was told before is older than the list.
bool AnswerMailbox::InitJobsResponse(const std::vector<JobListInfo>& jobs) {
    const std::lock_guard lock(mutex);
    updates.clear();
    updateOfJob.clear();
    answers.jobs = jobs;
    arrived.Raise();
    return true;
}

bool AnswerMailbox::EnqueueJobsFinish(const JobEnqueueResult& result) {
    return Keep(&Answers::enqueued, result);
}

bool AnswerMailbox::CancelJobsFinish(const std::vector<JobStatusInfo>& infos) {
    return Keep(&Answers::cancelled, infos);
}

bool AnswerMailbox::FetchScenariosResponse(const std::vector<ScenarioInfo>& scenarios) {
    return Keep(&Answers::scenarios, scenarios);
}

bool AnswerMailbox::FetchScenarioParameterSetsResponse(const std::vector<ScenarioParameterSetInfo>& parameterSets) {
    return Keep(&Answers::parameterSets, parameterSets);
}

bool AnswerMailbox::DeleteJobsResponse(const std::vector<std::wstring>& jobIds) {
    return Keep(&Answers::deleted, jobIds);
}

bool AnswerMailbox::FetchLocalizedStringsResponse(const std::wstring& strings) {
    return Keep(&Answers::strings, strings);
}

bool AnswerMailbox::InitCultureResponse(const std::wstring& culture) {
    return Keep(&Answers::culture, culture);
}

bool AnswerMailbox::TerminateResponse() {
    return Keep(&Answers::terminated, true);
}

bool AnswerMailbox::CheckJobStatusResponse(const std::vector<JobStatusInfo>& infos) {
    return Keep(&Answers::statuses, infos);
}

template <typename Answer>
bool AnswerMailbox::Keeper<Answer>::operator()(const std::wstring& payload) {
    Answer content;
    return ControllerCSWrapper::Deserialize(payload, content) && mailbox.Keep(place, content);
}

template class AnswerMailbox::Keeper<std::wstring>;
template class AnswerMailbox::Keeper<std::vector<std::wstring>>;

bool AnswerMailbox::FetchServiceListResponse(const std::vector<ServiceInfo>& /*services*/) {
    return false;
}

bool AnswerMailbox::FetchUserSettingsResponse(const UserSettingsInfo& /*settings*/) {
    return false;
}

bool AnswerMailbox::WriteUserSettingsResponse() {
    return false;
}

bool AnswerMailbox::ClearUserSettingsResponse(const UserSettingsInfo& /*settings*/) {
    return false;
}

bool AnswerMailbox::ShowSettingDialogResponse() {
    return false;
}

bool AnswerMailbox::FetchScenarioEditorPathResponse(const std::wstring& /*path*/) {
    return false;
}

bool AnswerMailbox::FetchPreviousStateFilePathResponse(const std::wstring& /*path*/) {
    return false;
}

bool AnswerMailbox::FetchThirdPartyNoticesPathResponse(const std::wstring& /*path*/) {
    return false;
}

} // namespace controller_cli
