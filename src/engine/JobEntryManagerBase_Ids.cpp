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
    const auto found =
        std::find_if(jobList.begin(), jobList.end(), [&id](const auto& job) { return job->GetId() == id; });
    if (found == jobList.end()) {
        return false;
    }
    entry = *found;
    return true;
}
