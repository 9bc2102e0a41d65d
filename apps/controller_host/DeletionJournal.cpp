#include "controller_host/DeletionJournal.h"

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"

namespace {

/// Directories outside the current work directory are never removed; they are not journaled.
bool StaysForNow(const JobListInfo& job) {
    return platform::SameName(platform::ParentDirectory(job.workDir), ControllerCSWrapper::GetWorkDirectory()) &&
           platform::Exists(job.workDir) && !ControllerCSWrapper::RemoveJobWorkDirectory(job.workDir);
}

} // namespace

std::vector<JobListInfo> DeletionJournal::Read() const {
    std::wstring text;
    std::vector<JobListInfo> jobs;
    if (platform::Exists(path) && ControllerCSWrapper::ReadJsonFile(path, text)) {
        // A journal in another format is ignored; the companion logs the error.
        (void)ControllerCSWrapper::Deserialize(text, jobs);
    }
    return jobs;
}

void DeletionJournal::Add(const std::vector<JobListInfo>& jobs) const {
    if (!jobs.empty()) {
        std::vector<JobListInfo> all = Read();
        all.insert(all.end(), jobs.begin(), jobs.end());
        Write(all);
    }
}

void DeletionJournal::Retry() const {
    std::vector<JobListInfo> left;
    for (const JobListInfo& job : Read()) {
        if (StaysForNow(job)) {
            left.push_back(job);
        }
    }
    Write(left);
}

void DeletionJournal::Write(const std::vector<JobListInfo>& jobs) const {
    if (jobs.empty()) {
        // A journal that cannot be removed is processed again at the next start.
        (void)platform::RemoveFile(path);
    } else {
        // The companion logs the error. Without a journal, a directory is left behind if the host is killed before its
        // removal.
        (void)ControllerCSWrapper::CreateJsonFile(ControllerCSWrapper::Serialize(L"JobList", jobs), path);
    }
}
