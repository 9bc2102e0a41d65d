#include "CommonControllerLib/JobEntryManagerBase.h"

#include "CommonControllerLib/ControllerLogManager.h"
#include "text/Numbers.h"

#include <cstddef>
#include <optional>

namespace {

/// What no job has, shown as "Unknown".
constexpr auto unknownStatus = static_cast<JobStatus>(-1);

/// Takes the text that names this job, its id or else its number, out of what was asked for.
std::optional<std::wstring> TakeName(const JobEntry& job, std::set<std::wstring>& requested) {
    ControllerLogManager::DebugLog(job.GetId());
    if (requested.erase(job.GetId()) > 0) {
        return job.GetId();
    }
    std::wstring number = numbers::DecimalText(job.GetSeqId());
    ControllerLogManager::DebugLog(number);
    return requested.erase(number) > 0 ? std::optional(std::move(number)) : std::nullopt;
}

using StatusByName = std::map<std::wstring, JobStatusInfo>;

StatusByName CollectStatuses(const std::list<std::shared_ptr<JobEntry>>& jobs, std::set<std::wstring> requested) {
    StatusByName statuses;
    for (const auto& job : jobs) {
        if (const auto name = TakeName(*job, requested)) {
            ControllerLogManager::DebugLog(*name);
            statuses[*name] = job->GetJobStatusInfo();
        }
    }
    return statuses;
}

/// Gives the answer for one requested id. Of an unknown one only status and id are set.
void Answer(const StatusByName& statuses, const std::wstring& id, JobStatusInfo& answer) {
    ControllerLogManager::DebugLog(id);
    const auto found = statuses.find(id);
    if (found != statuses.end()) {
        answer = found->second;
    } else {
        answer.status = unknownStatus;
    }
    answer.id = id;
}

} // namespace

bool JobEntryManagerBase::CheckJobStatus(const std::vector<std::wstring>& ids, std::vector<JobStatusInfo>& statuses) {
    const std::lock_guard lock(mutex);
    const StatusByName found = CollectStatuses(jobList, {ids.begin(), ids.end()});
    statuses.resize(ids.size());
    for (std::size_t i = 0; i < ids.size(); ++i) {
        Answer(found, ids[i], statuses[i]);
    }
    return true;
}
