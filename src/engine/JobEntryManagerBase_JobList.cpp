#include "CommonControllerLib/JobEntryManagerBase.h"

#include "CommonControllerLib/ControllerLogManager.h"
#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "platform/system/LargePages.h"

#include <cstddef>
#include <utility>

namespace {

using Entries = std::list<std::shared_ptr<JobEntry>>;

/// The records of all jobs in list order, taken out of the entries during the lifetime of this object: to copy and
/// release the texts of a long list takes longer than to write its file.
class LentRecords {
public:
    explicit LentRecords(const Entries& lenders) : entries(lenders) {
        records.reserve(entries.size());
        platform::PreferLargePages(records.data(), records.capacity() * sizeof(JobListInfo));
        for (const auto& entry : entries) {
            records.push_back(std::move(RecordOf(*entry)));
        }
    }
    ~LentRecords() {
        auto record = records.begin();
        for (const auto& entry : entries) {
            RecordOf(*entry) = std::move(*record++);
        }
    }
    LentRecords(const LentRecords&) = delete;
    LentRecords& operator=(const LentRecords&) = delete;

    const std::vector<JobListInfo>& All() const { return records; }

private:
    /// An entry shows its record to others for reading only.
    struct Access : JobEntry {
        static constexpr JobListInfo JobEntry::*record = &Access::info;
    };
    static JobListInfo& RecordOf(JobEntry& entry) { return entry.*Access::record; }

    const Entries& entries;
    std::vector<JobListInfo> records;
};

} // namespace

void JobEntryManagerBase::ReadJobList(std::list<std::shared_ptr<JobEntry>>& jobs) {
    ControllerLogManager::DebugLog(L"Read job_list.json");
    std::vector<JobListInfo> records;
    if (!ControllerCSWrapper::ParseJobList(ControllerCSWrapper::GetJobListFile(), records)) {
        return;
    }
    for (const JobListInfo& record : records) {
        jobs.push_back(std::shared_ptr<JobEntry>(CreateNewJobEntry(&record)));
    }
}

void JobEntryManagerBase::UpdateJobList(const JobListChange& change) {
    ControllerLogManager::Log(ControllerLogManager::Debug, 1, L"Update job_list.json");
    WriteJobList(change);
}

void JobEntryManagerBase::WriteJobList(const JobListChange&) {
    // The records are back in their entries before the file is written.
    const std::wstring json = ControllerCSWrapper::Serialize(L"JobList", LentRecords(jobList).All());
    // A failure is logged by the callee; the next change writes the whole list again.
    (void)ControllerCSWrapper::CreateJsonFile(json, ControllerCSWrapper::GetJobListFile());
}

bool JobEntryManagerBase::GetJobList(std::vector<JobListInfo>& records) {
    for (const auto& job : jobList) {
        records.push_back(job->GetJobListInfo());
    }
    return true;
}
