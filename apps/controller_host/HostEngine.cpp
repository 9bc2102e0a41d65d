#include "controller_host/HostEngine.h"

#include "CommonControllerLib/ControllerLogManager.h"
#include "CommonControllerLib/FunctionManager.h"
#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "controller_host/DeletionJournal.h"
#include "controller_host/FailureReasons.h"
#include "engine/Queue.h"
#include "fault_points/FaultPoint.h"
#include "formats/JobListFile.h"
#include "formats/JobStates.h"
#include "platform/files/FileSystem.h"
#include "services/Settings.h"

#include <algorithm>
#include <iterator>

namespace {

/// A job whose scenario is not trusted.
class HostJobEntry : public JobEntry {
public:
    using JobEntry::JobEntry;

    /// A scenario may have replaced its work directory by a link: then no file is created in the link's target. The
    /// function module requests the stop in another way, too.
    bool OnCancelJob() override { return platform::IsLink(info.workDir) || JobEntry::OnCancelJob(); }
};

/// A journal may be as long as its snapshot, but at least this long. Units: bytes.
constexpr std::uint64_t smallestLongestJournal = std::uint64_t{1} << 20;

std::uint64_t SizeOf(const std::wstring& path) {
    const auto stamp = platform::StampOf(path);
    return stamp ? stamp->size : 0;
}

job_list_journal::Rows RowsOf(const std::vector<std::shared_ptr<JobEntry>>& jobs) {
    job_list_journal::Rows rows;
    rows.reserve(jobs.size());
    std::transform(jobs.begin(), jobs.end(), std::back_inserter(rows),
                   [](const auto& job) { return &job->GetJobListInfo(); });
    return rows;
}

} // namespace

JobEntry* HostEngine::CreateNewJobEntry(const JobListInfo* info) {
    return info == nullptr ? new HostJobEntry() : new HostJobEntry(*info);
}

bool HostEngine::IsSuspendJobExecution() {
    const auto isActive = [](const auto& job) { return IsActive(job->GetStatus()); };
    const auto canStart = [](const auto& job) { return queue::CanStart(job->GetStatus()); };
    const auto active = std::count_if(jobList.begin(), jobList.end(), isActive);
    // Reads the settings file only if a job waits.
    return active > 0 &&
           (std::none_of(nextJob, jobList.end(), canStart) || active >= settings::Current()->parallelJobs);
}

void HostEngine::WriteJobList(const JobListChange& change) {
    if (journal.IsOpen() && change.jobs.empty() && change.deletedIds.empty()) {
        return;
    }
    lastChange = std::chrono::steady_clock::now();
    if (!journal.IsOpen() || journal.Size() > longestJournal ||
        !job_list_file::IsUnchanged(ControllerCSWrapper::GetJobListFile()) ||
        journal.Append(RowsOf(change.jobs), change.deletedIds)) {
        WriteSnapshot();
        return;
    }
    hasChanges = true;
}

bool HostEngine::WriteRows(const std::wstring& snapshotId) {
    auto position = jobList.cbegin();
    const auto next = [&] { return position == jobList.cend() ? nullptr : &(*position++)->GetJobListInfo(); };
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
    if (journal.Flush()) {
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
        journal.End();
    }
}

std::vector<void*> HostEngine::ActiveProcesses() {
    const std::lock_guard lock(mutex);
    std::vector<void*> processes;
    for (const auto& job : jobList) {
        if (IsActive(job->GetStatus()) && job->GetProcessHandle() != nullptr) {
            processes.push_back(job->GetProcessHandle());
        }
    }
    return processes;
}

bool HostEngine::HasActiveJobs() {
    const std::lock_guard lock(mutex);
    return std::any_of(jobList.begin(), jobList.end(), [](const auto& job) { return IsActive(job->GetStatus()); });
}

std::vector<JobStatusInfo> HostEngine::StatusOf(const std::vector<JobIdInfo>& jobs) {
    std::set<std::wstring> ids;
    for (const JobIdInfo& job : jobs) {
        ids.insert(job.id);
    }
    const std::lock_guard lock(mutex);
    std::vector<JobStatusInfo> statuses;
    for (const auto& job : jobList) {
        if (ids.contains(job->GetId())) {
            statuses.push_back(job->GetJobStatusInfo());
        }
    }
    return statuses;
}

std::vector<JobStatusInfo> HostEngine::NoLongerListed(const std::vector<JobListInfo>& jobs) {
    const std::set<std::wstring> listed = ListedIds();
    std::vector<JobStatusInfo> gone;
    for (const JobListInfo& job : jobs) {
        if (!listed.contains(job.id)) {
            JobStatusInfo& report = gone.emplace_back();
            report.id = job.id;
            report.status = unlistedStatus;
        }
    }
    return gone;
}

std::set<std::wstring> HostEngine::ListedIds() {
    const std::lock_guard lock(mutex);
    std::set<std::wstring> ids;
    for (const auto& job : jobList) {
        ids.insert(job->GetId());
    }
    return ids;
}

void HostEngine::DeleteOldJobsDurably() {
    DeleteOldJobs([this](auto& ids, auto& deleted) { return DeleteJobsDurably(ids, deleted); });
}

bool HostEngine::DeleteJobsDurably(std::vector<std::wstring>& ids, std::vector<std::wstring>& deleted) {
    const DeletionJournal notes(ControllerCSWrapper::GetJobListFile());
    notes.Add(DeletableJobs(ids));
    fault_points::ReachFaultPoint(fault_points::FaultPoint::DeletionsNoted);
    DeleteJobs(ids, deleted);
    FlushJobList();
    fault_points::ReachFaultPoint(fault_points::FaultPoint::DeletionsToBeSettled);
    notes.Settle();
    ForgetFailures();
    fault_points::ReachFaultPoint(fault_points::FaultPoint::DeletionsSettled);
    return true;
}

std::vector<JobListInfo> HostEngine::DeletableJobs(const std::vector<std::wstring>& ids) {
    const std::lock_guard lock(mutex);
    std::set<std::wstring> requested(ids.begin(), ids.end());
    std::vector<JobListInfo> jobs;
    for (const auto& job : jobList) {
        if (queue::CanDelete(job->GetStatus()) && queue::TakeRequested(job->GetId(), job->GetSeqId(), requested)) {
            jobs.push_back(job->GetJobListInfo());
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
    for (const auto& job : jobList) {
        if (failed.contains(job->GetId()) && !job->GetFailure().empty()) {
            reasons.Leave(job->GetJobListInfo(), ReasonOf(*job));
        }
    }
}

void HostEngine::ForgetFailures() {
    FailureReasons(ControllerCSWrapper::GetJobListFile()).KeepOnly(ListedIds());
}

void HostEngine::FinishDeletions() {
    const DeletionJournal notes(ControllerCSWrapper::GetJobListFile());
    std::vector<std::wstring> ids;
    for (const JobListInfo& noted : notes.Read()) {
        const bool isListed = std::any_of(jobList.begin(), jobList.end(), [&noted](const auto& entry) {
            return entry->GetId() == noted.id && entry->GetWorkDir() == noted.workDir;
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
    notes.Settle();
    ForgetFailures();
}
