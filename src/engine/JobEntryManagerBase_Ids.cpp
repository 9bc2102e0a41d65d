#include "CommonControllerLib/JobEntryManagerBase.h"

#include "CommonControllerLib/PathFuncs.h"
#include "engine/Queue.h"
#include "engine/UniqueId.h"
#include "platform/files/FileSystem.h"

#include <algorithm>
#include <utility>

std::wstring JobEntryManagerBase::CreateUniqueId(std::random_device& device) {
    const auto isInWorkDirectory = [this](const std::wstring& id) {
        return platform::Exists(PathFuncs::Join(workDirectory, id));
    };
    return DrawUniqueId(std::ref(device), isInWorkDirectory, knownJobIds);
}

int JobEntryManagerBase::CreateSequentialId() {
    return std::exchange(nextSeqId, queue::NumberAfter(nextSeqId));
}

bool JobEntryManagerBase::FindJobEntry(const std::wstring& id, std::shared_ptr<JobEntry>& entry) {
    const std::vector<JobPosition> jobs = JobsNamed({id});
    const auto found = std::find_if(jobs.begin(), jobs.end(), [&id](const auto& job) { return (*job)->GetId() == id; });
    if (found == jobs.end()) {
        return false;
    }
    entry = **found;
    return true;
}

std::vector<JobEntryManagerBase::JobPosition> JobEntryManagerBase::JobsNamed(const std::set<std::wstring>&) {
    return AllJobs();
}

std::vector<JobEntryManagerBase::JobPosition> JobEntryManagerBase::ActiveJobs() {
    return AllJobs();
}

std::vector<JobEntryManagerBase::JobPosition> JobEntryManagerBase::AllJobs() {
    std::vector<JobPosition> jobs;
    jobs.reserve(jobList.size());
    for (auto position = jobList.begin(); position != jobList.end(); ++position) {
        jobs.push_back(position);
    }
    return jobs;
}
