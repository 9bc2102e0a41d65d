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
        // Notes of another layout are worth nothing; the companion logs them.
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

void DeletionJournal::Settle() const {
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
        // Notes that stay are settled again by the next start.
        (void)platform::RemoveFile(path);
    } else {
        // Logged by the companion. Without a note, a directory stays behind when the host is killed right now.
        (void)ControllerCSWrapper::CreateJsonFile(ControllerCSWrapper::Serialize(L"JobList", jobs), path);
    }
}
