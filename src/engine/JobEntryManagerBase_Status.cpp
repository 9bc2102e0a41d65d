#include "CommonControllerLib/JobEntryManagerBase.h"

#include "CommonControllerLib/ControllerLogManager.h"
#include "engine/Queue.h"
#include "text/Numbers.h"

#include <cstddef>
#include <optional>

namespace {

/// Removes the text that names this job, its id or else its number, from `requested` and returns it.
std::optional<std::wstring> TakeName(const JobEntry& job, std::set<std::wstring>& requested) {
    ControllerLogManager::DebugLog(job.GetId());
    std::optional<std::wstring> name = queue::TakeRequested(job.GetId(), job.GetSeqId(), requested);
    if (name != job.GetId()) {
        ControllerLogManager::DebugLog(numbers::DecimalText(job.GetSeqId()));
    }
    return name;
}

using StatusByName = std::map<std::wstring, JobStatusInfo>;

StatusByName CollectStatuses(const std::vector<std::list<std::shared_ptr<JobEntry>>::iterator>& jobs,
                             std::set<std::wstring> requested) {
    StatusByName statuses;
    for (const auto& job : jobs) {
        if (const auto name = TakeName(**job, requested)) {
            ControllerLogManager::DebugLog(*name);
            statuses[*name] = (*job)->GetJobStatusInfo();
        }
    }
    return statuses;
}

/// Sets the answer for one requested id. For an unknown job only status and id are set.
void Answer(const StatusByName& statuses, const std::wstring& id, JobStatusInfo& answer) {
    ControllerLogManager::DebugLog(id);
    const auto found = statuses.find(id);
    if (found != statuses.end()) {
        answer = found->second;
    } else {
        answer.status = unlistedStatus;
    }
    answer.id = id;
}

} // namespace

bool JobEntryManagerBase::CheckJobStatus(const std::vector<std::wstring>& ids, std::vector<JobStatusInfo>& statuses) {
    const std::lock_guard lock(mutex);
    const std::set<std::wstring> requested(ids.begin(), ids.end());
    const StatusByName found = CollectStatuses(JobsNamed(requested), requested);
    statuses.resize(ids.size());
    for (std::size_t i = 0; i < ids.size(); ++i) {
        Answer(found, ids[i], statuses[i]);
    }
    return true;
}
