#include "CommonControllerLib/JobEntryManagerBase.h"

#include "CommonControllerLib/ControllerLogManager.h"
#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "engine/RecordCopies.h"

#include <chrono>
#include <utility>

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
    // Copies: `CancelAllJobs` and `GetJobList` read the records without the lock.
    RecordCopies::Records records = RecordCopies::OfProcess().Take();
    RecordCopies::Update(records, jobList);
    // A failure is logged by the callee; the next change writes the whole list again.
    (void)ControllerCSWrapper::CreateJsonFile(ControllerCSWrapper::Serialize(L"JobList", records),
                                              ControllerCSWrapper::GetJobListFile());
    RecordCopies::OfProcess().Keep(std::move(records), std::chrono::steady_clock::now());
}

JobEntryManagerBase::~JobEntryManagerBase() {
    RecordCopies::OfProcess().Release();
}

bool JobEntryManagerBase::GetJobList(std::vector<JobListInfo>& records) {
    for (const auto& job : jobList) {
        records.push_back(job->GetJobListInfo());
    }
    return true;
}
