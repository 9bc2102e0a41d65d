#include "CommonControllerLib/JobEntryManagerBase.h"

#include "CommonControllerLib/ControllerLogManager.h"
#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "engine/Queue.h"
#include "fault_points/FaultPoint.h"
#include "text/Numbers.h"

namespace {

/// Returns true if the job was requested and is not active. The name of an active job stays in `requested`.
bool TakeDeletable(JobEntry& job, std::set<std::wstring>& requested) {
    return queue::CanDelete(job.GetStatus()) && queue::TakeRequested(job.GetId(), job.GetSeqId(), requested);
}

/// The path is the text up to its first U+0000. A directory that cannot be removed does not prevent the deletion of the
/// job.
void RemoveWorkDirectory(const std::wstring& workDir) {
    try {
        (void)ControllerCSWrapper::RemoveJobWorkDirectory(workDir.substr(0, workDir.find(L'\0')));
    } catch (...) {
        return;
    }
}

} // namespace

bool JobEntryManagerBase::DeleteJobs(std::vector<std::wstring>& ids, std::vector<std::wstring>& deleted) {
    const std::lock_guard lock(mutex);
    std::set<std::wstring> requested(ids.begin(), ids.end());
    JobListChange change;
    for (const JobPosition position : JobsNamed(requested)) {
        if (TakeDeletable(**position, requested)) {
            change.deleted.push_back(*position);
            DeleteJob(position);
        }
    }
    for (const std::wstring& id : ids) {
        // The remaining names are unknown or belong to active jobs.
        if (requested.erase(id) == 0) {
            deleted.push_back(id);
        }
    }
    if (!deleted.empty()) {
        fault_points::ReachFaultPoint(fault_points::FaultPoint::DeletionsDone);
        UpdateJobList(change);
        fault_points::ReachFaultPoint(fault_points::FaultPoint::DeletionsListed);
        RestartNumbering();
    }
    return true;
}

void JobEntryManagerBase::DeleteJob(JobPosition position) {
    if (nextJob == position) {
        ++nextJob;
    }
    const JobEntry& job = **position;
    fault_points::ReachFaultPoint(fault_points::FaultPoint::DeletionBegun);
    RemoveWorkDirectory(job.GetWorkDir());
    fault_points::ReachFaultPoint(fault_points::FaultPoint::WorkDirectoryRemoved);
    ControllerLogManager::DebugLog(L"Job: " + numbers::DecimalText(job.GetSeqId()) + L" is deleted");
    jobList.erase(position);
}

void JobEntryManagerBase::RestartNumbering() {
    if (jobList.empty()) {
        nextSeqId = 1;
        ControllerLogManager::DebugLog(L"Reset sequence ID");
    }
}
