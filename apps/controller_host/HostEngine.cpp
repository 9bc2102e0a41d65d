#include "controller_host/HostEngine.h"

#include "CommonControllerLib/ControllerLogManager.h"
#include "CommonControllerLib/FunctionManager.h"
#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "controller_host/DeletionJournal.h"
#include "controller_host/FailureReasons.h"
#include "controller_host/HostJobEntry.h"
#include "engine/Queue.h"
#include "fault_points/FaultPoint.h"
#include "formats/JobListFile.h"
#include "formats/JobStates.h"
#include "formats/QueueStateFile.h"
#include "platform/files/FileSystem.h"
#include "platform/system/Clock.h"
#include "services/Settings.h"

#include <algorithm>
#include <iterator>

namespace {

/// A journal may be as long as its snapshot, but at least this long. Units: bytes.
constexpr std::uint64_t smallestLongestJournal = std::uint64_t{1} << 20;

std::uint64_t SizeOf(const std::wstring& path) {
    const auto stamp = platform::StampOf(path);
    return stamp ? stamp->size : 0;
}

job_list_journal::Rows RowsOf(const std::vector<std::shared_ptr<JobEntry>>& jobs) {
    job_list_journal::Rows rows;
    rows.reserve(jobs.size());
    std::transform(jobs.begin(), jobs.end(), std::back_inserter(rows), [](const auto& job) {
        return job_list_file::Row{&job->GetJobListInfo(), &QueueRecordOf(*job)};
    });
    return rows;
}

std::vector<std::wstring> IdsOf(const std::vector<std::shared_ptr<JobEntry>>& jobs) {
    std::vector<std::wstring> ids;
    ids.reserve(jobs.size());
    std::transform(jobs.begin(), jobs.end(), std::back_inserter(ids), [](const auto& job) { return job->GetId(); });
    return ids;
}

void ReadRows(std::list<std::shared_ptr<JobEntry>>& jobs) {
    std::vector<ListedJob> rows;
    // Without a list there are no jobs; the reason is logged.
    (void)job_list_file::ReadRows(ControllerCSWrapper::GetJobListFile(), rows);
    for (ListedJob& row : rows) {
        jobs.push_back(std::make_shared<HostJobEntry>(std::move(row)));
    }
}

} // namespace

HostEngine::HostEngine(const FunctionManager* manager) : HostEngine(manager, *settings::Current()) {}

HostEngine::HostEngine(const FunctionManager* manager, const settings::Settings& current)
    : JobEntryManagerBase(manager, {.keepsDequeued = true,
                                    .keepsQueued = current.afterRestart != settings::AfterRestart::Cancel,
                                    .requeuesRunning = current.afterRestart == settings::AfterRestart::All,
                                    .deletesOldJobs = false,
                                    .readJobs = ReadRows}),
      state(queue_state_file::Read(current.jobListFile)) {
    index.AddNew(jobList);
    ScheduleListedJobs();
    hasChanges = hasChanges || platform::Exists(job_list_journal::PathOf(ControllerCSWrapper::GetJobListFile()));
}

JobEntry* HostEngine::CreateNewJobEntry(const JobListInfo* info) {
    return info == nullptr ? new HostJobEntry() : new HostJobEntry(*info, NewQueueRecord());
}

QueueRecord HostEngine::NewQueueRecord() const {
    return {requestedScheduling, platform::Now()};
}

void HostEngine::UpdateIndex(const JobListChange& change) {
    index.AddNew(jobList);
    for (const auto& job : change.deleted) {
        index.Remove(*job);
    }
    for (const auto& job : change.jobs) {
        index.Update(*job);
    }
    UpdateCandidates(change);
}

void HostEngine::WriteJobList(const JobListChange& change) {
    UpdateIndex(change);
    JobListChange scheduled = change;
    Schedule(scheduled);
    if (journal.IsOpen() && scheduled.jobs.empty() && scheduled.deleted.empty()) {
        return;
    }
    lastChange = std::chrono::steady_clock::now();
    if (!journal.IsOpen() || journal.Size() > longestJournal ||
        !job_list_file::IsUnchanged(ControllerCSWrapper::GetJobListFile()) ||
        !journal.Append(RowsOf(scheduled.jobs), IdsOf(scheduled.deleted))) {
        WriteSnapshot();
        return;
    }
    hasChanges = true;
}

bool HostEngine::WriteRows(const std::wstring& snapshotId) {
    auto position = jobList.cbegin();
    const auto next = [&] {
        if (position == jobList.cend()) {
            return job_list_file::Row();
        }
        const JobEntry& job = **position++;
        return job_list_file::Row{&job.GetJobListInfo(), &QueueRecordOf(job)};
    };
    return job_list_file::WriteRows(ControllerCSWrapper::GetJobListFile(), jobList.size(), next, snapshotId);
}

/// A list that cannot be written is kept in memory; the host's loop writes it again.
void HostEngine::WriteSnapshot() {
    const std::wstring path = ControllerCSWrapper::GetJobListFile();
    const std::wstring snapshotId = ControllerCSWrapper::CreateGuid();
    hasChanges = false;
    journal.Close();
    if (WriteRows(snapshotId)) {
        fault_points::ReachFaultPoint(fault_points::FaultPoint::SnapshotWritten);
        // Without a journal, the next change writes a snapshot again.
        (void)journal.Begin(job_list_journal::PathOf(path), snapshotId);
        longestJournal = std::max(smallestLongestJournal, SizeOf(path));
    }
}

void HostEngine::FlushJobList() {
    const std::lock_guard lock(mutex);
    if (!journal.Flush()) {
        WriteSnapshot();
    }
}

void HostEngine::FoldJournal() {
    const std::lock_guard lock(mutex);
    if (HasChanges()) {
        WriteSnapshot();
    }
}

void HostEngine::EndJournal() {
    const std::lock_guard lock(mutex);
    if ((journal.IsOpen() || HasChanges()) && WriteRows({})) {
        journal.End(job_list_journal::PathOf(ControllerCSWrapper::GetJobListFile()));
    }
}

std::vector<void*> HostEngine::ActiveProcesses() {
    const std::lock_guard lock(mutex);
    std::vector<void*> processes;
    for (const JobPosition job : index.Active()) {
        if ((*job)->GetProcessHandle() != nullptr) {
            processes.push_back((*job)->GetProcessHandle());
        }
    }
    return processes;
}

bool HostEngine::IsCompleted() {
    const std::lock_guard lock(mutex);
    return !index.HasQueued() && index.ActiveCount() == 0;
}

bool HostEngine::HasActiveJobs() {
    const std::lock_guard lock(mutex);
    return index.ActiveCount() > 0;
}

bool HostEngine::HasJobsLeft() {
    const std::lock_guard lock(mutex);
    return index.ActiveCount() > 0 || index.HasQueued();
}

std::vector<JobStatusInfo> HostEngine::StatusOf(const std::vector<JobIdInfo>& jobs) {
    std::set<std::wstring> ids;
    for (const JobIdInfo& job : jobs) {
        ids.insert(job.id);
    }
    const std::lock_guard lock(mutex);
    std::vector<JobStatusInfo> statuses;
    for (const JobPosition job : index.WithIds(ids)) {
        statuses.push_back((*job)->GetJobStatusInfo());
    }
    return statuses;
}

std::vector<JobListInfo> HostEngine::Listed(const std::vector<std::wstring>& names) {
    const std::lock_guard lock(mutex);
    std::vector<JobListInfo> jobs;
    for (const JobPosition job : index.Named({names.begin(), names.end()})) {
        jobs.push_back((*job)->GetJobListInfo());
    }
    return jobs;
}

std::vector<JobStatusInfo> HostEngine::NoLongerListed(const std::vector<JobListInfo>& jobs) {
    std::vector<JobStatusInfo> gone;
    for (const JobListInfo& job : jobs) {
        if (!IsListed(job.id)) {
            JobStatusInfo& report = gone.emplace_back();
            report.id = job.id;
            report.status = unlistedStatus;
        }
    }
    return gone;
}

bool HostEngine::IsListed(const std::wstring& id) {
    const std::lock_guard lock(mutex);
    return index.Contains(id);
}

void HostEngine::DeleteOldJobsDurably() {
    DeleteOldJobs([this](auto& ids, auto& deleted) { return DeleteJobsDurably(ids, deleted); });
}

bool HostEngine::DeleteJobsDurably(std::vector<std::wstring>& ids, std::vector<std::wstring>& deleted) {
    const DeletionJournal deletions(ControllerCSWrapper::GetJobListFile());
    deletions.Add(DeletableJobs(ids));
    fault_points::ReachFaultPoint(fault_points::FaultPoint::DeletionsNoted);
    DeleteJobs(ids, deleted);
    FlushJobList();
    fault_points::ReachFaultPoint(fault_points::FaultPoint::DeletionsToBeSettled);
    deletions.Retry();
    ForgetFailures();
    fault_points::ReachFaultPoint(fault_points::FaultPoint::DeletionsSettled);
    return true;
}

std::vector<JobListInfo> HostEngine::DeletableJobs(const std::vector<std::wstring>& ids) {
    const std::lock_guard lock(mutex);
    std::set<std::wstring> requested(ids.begin(), ids.end());
    std::vector<JobListInfo> jobs;
    for (const JobPosition position : index.Named(requested)) {
        JobEntry& job = **position;
        if (queue::CanDelete(job.GetStatus()) && queue::TakeRequested(job.GetId(), job.GetSeqId(), requested)) {
            jobs.push_back(job.GetJobListInfo());
        }
    }
    return jobs;
}

std::wstring HostEngine::ReasonOf(const JobEntry& job) const {
    std::wstring reason = job.GetFailure();
    if (!functionManager->HasFunction("RunScenario")) {
        for (const std::wstring& problem : moduleProblems) {
            reason += L" " + problem;
        }
    }
    return reason;
}

void HostEngine::ExplainFailures(const std::vector<JobStatusInfo>& changed) {
    std::set<std::wstring> failed;
    for (const JobStatusInfo& job : changed) {
        if (job.status == JobStatus::Failed) {
            failed.insert(job.id);
        }
    }
    if (failed.empty()) {
        return;
    }
    const FailureReasons reasons(ControllerCSWrapper::GetJobListFile());
    const std::lock_guard lock(mutex);
    for (const JobPosition position : index.WithIds(failed)) {
        if (const JobEntry& job = **position; !job.GetFailure().empty()) {
            reasons.Leave(job.GetJobListInfo(), ReasonOf(job));
        }
    }
}

void HostEngine::ForgetFailures() {
    FailureReasons(ControllerCSWrapper::GetJobListFile()).KeepOnly([this](const std::wstring& id) {
        return IsListed(id);
    });
}

void HostEngine::FinishDeletions() {
    const DeletionJournal deletions(ControllerCSWrapper::GetJobListFile());
    std::vector<std::wstring> ids;
    for (const JobListInfo& noted : deletions.Read()) {
        const std::vector<JobListInfo> listed = Listed({noted.id});
        const bool isListed = std::any_of(listed.begin(), listed.end(), [&noted](const JobListInfo& job) {
            return job.id == noted.id && job.workDir == noted.workDir;
        });
        if (isListed) {
            ids.push_back(noted.id);
            ControllerLogManager::Log(L"Job: " + std::to_wstring(noted.seqId) +
                                      L" was being deleted when an earlier host ended; its deletion is finished.");
        }
    }
    std::vector<std::wstring> deleted;
    DeleteJobs(ids, deleted);
    FlushJobList();
    deletions.Retry();
    ForgetFailures();
}
