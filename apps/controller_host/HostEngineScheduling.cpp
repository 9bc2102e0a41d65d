#include "controller_host/HostEngine.h"

#include "CommonControllerLib/ControllerLogManager.h"
#include "controller_host/HostJobEntry.h"
#include "engine/ModuleCall.h"
#include "engine/Queue.h"
#include "formats/JobStates.h"
#include "formats/QueueStateFile.h"
#include "formats/ScenarioManifest.h"
#include "platform/system/Clock.h"
#include "services/Settings.h"
#include "text/Numbers.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

[[nodiscard]] bool CheckNeed(const std::wstring& name, std::int64_t amount,
                             const std::map<std::wstring, std::int64_t>& resources, std::wstring& problem) {
    const auto resource = resources.find(name);
    if (resource == resources.end()) {
        problem = L"The resource " + name + L" is needed, which the setting \"resources\" does not name.";
        return false;
    }
    if (amount > resource->second) {
        problem = L"More is needed of the resource " + name + L" than there is: " + std::to_wstring(amount) + L" of " +
                  std::to_wstring(resource->second) + L". Need less, or change the setting \"resources\".";
        return false;
    }
    return true;
}

[[nodiscard]] bool CheckNeeds(const std::map<std::wstring, std::int64_t>& needs, std::wstring& problem) {
    const auto current = settings::Current();
    return std::all_of(needs.begin(), needs.end(), [&](const auto& need) {
        return CheckNeed(need.first, need.second, current->resources, problem);
    });
}

void Apply(const JobsEdit& edit, Scheduling& scheduling) {
    scheduling.priority = edit.priority.value_or(scheduling.priority);
    scheduling.hold = edit.hold.value_or(scheduling.hold);
    scheduling.notBefore = edit.notBefore.value_or(scheduling.notBefore);
    scheduling.needs = edit.needs.value_or(scheduling.needs);
}

} // namespace

bool HostEngine::EnqueueJob(ScheduledRequest& request, JobEnqueueResult& result) {
    requestedScheduling = static_cast<const Scheduling&>(request);
    AddDefaults(settings::Current()->jobDefaults, requestedScheduling);
    const bool isEnqueued = JobEntryManagerBase::EnqueueJob(request, result);
    requestedScheduling = {};
    return isEnqueued;
}

bool HostEngine::ResolveScheduling(Scheduling& scheduling, std::wstring& problem) {
    const std::lock_guard lock(mutex);
    for (auto* const predecessors : {&scheduling.after, &scheduling.afterEnd}) {
        for (std::wstring& name : *predecessors) {
            const std::vector<JobPosition> jobs = index.Named({name});
            if (jobs.empty()) {
                problem = L"The job " + name + L", which has to end before, is not listed.";
                return false;
            }
            name = (*jobs.front())->GetId();
        }
    }
    return CheckNeeds(scheduling.needs, problem);
}

void HostEngine::AddNeedsOfScenario(ScheduledRequest& request) {
    const auto catalogued = scenarioMap.find(request.scenario.id);
    const std::wstring& path = catalogued == scenarioMap.end() ? request.scenario.id : catalogued->second.path;
    scenario_manifest::ScenarioManifest manifest;
    std::wstring problem;
    // A job whose description cannot be read fails when it starts, and says why.
    if (scenario_manifest::ReadFor(path, manifest, problem)) {
        request.needs.insert(manifest.needs.begin(), manifest.needs.end());
    }
}

bool HostEngine::EditJobs(const JobsEdit& edit, std::vector<JobStatusInfo>& edited, std::wstring& problem) {
    if (edit.needs && !CheckNeeds(*edit.needs, problem)) {
        return false;
    }
    const std::lock_guard lock(mutex);
    JobListChange change;
    for (const JobPosition position : index.Named({edit.jobs.begin(), edit.jobs.end()})) {
        auto* const job = dynamic_cast<HostJobEntry*>(position->get());
        if (job != nullptr && job->GetStatus() == JobStatus::Queued) {
            Apply(edit, job->queue);
            change.jobs.push_back(*position);
            edited.push_back(job->GetJobStatusInfo());
        }
    }
    WriteJobList(change);
    return true;
}

std::vector<JobStatusInfo> HostEngine::TakeStranded() {
    const std::lock_guard lock(mutex);
    return std::exchange(strandedReports, {});
}

std::vector<ListedJob> HostEngine::Rows(const JobsQuery& query) {
    const std::lock_guard lock(mutex);
    std::vector<ListedJob> rows;
    if (!query.jobs.empty()) {
        for (const JobPosition job : index.Named({query.jobs.begin(), query.jobs.end()})) {
            rows.push_back(RowOf(**job));
        }
        return rows;
    }
    const std::size_t most = query.limit > 0 ? static_cast<std::size_t>(query.limit) : jobList.size();
    for (JobPosition job = FirstAfter(query.after); job != jobList.end() && rows.size() < most; ++job) {
        rows.push_back(RowOf(**job));
    }
    return rows;
}

/// Walks over the list only if the job with this number was deleted.
HostEngine::JobPosition HostEngine::FirstAfter(std::int32_t number) {
    if (const auto last = index.Named({numbers::DecimalText(number)}); !last.empty()) {
        return std::next(last.back());
    }
    return std::find_if(jobList.begin(), jobList.end(), [number](const auto& job) { return job->GetSeqId() > number; });
}

ListedJob HostEngine::RowOf(const JobEntry& job) const {
    ListedJob row(job.GetJobListInfo(), QueueRecordOf(job));
    if (row.status == JobStatus::Queued) {
        ExplainWait(row);
    }
    return row;
}

void HostEngine::ExplainWait(ListedJob& row) const {
    using Kind = Scheduler::WaitReason::Kind;
    const auto why = scheduler.WhyWaiting(row.id, platform::Now());
    if (!why || why->kind == Kind::Turn) {
        return;
    }
    row.waitName = why->name;
    switch (why->kind) {
    case Kind::Hold:
        row.waitReason = L"hold";
        break;
    case Kind::Time:
        row.waitReason = L"time";
        break;
    case Kind::Predecessor:
        row.waitReason = L"job";
        if (const auto job = index.WithId(why->name)) {
            row.waitName = numbers::DecimalText((*job->position)->GetSeqId());
        }
        break;
    default:
        row.waitReason = L"resource";
        break;
    }
}

bool HostEngine::SetState(const QueueState& newState, std::wstring& problem) {
    if (!queue_state_file::Write(settings::FrozenForProcess()->jobListFile, newState, problem)) {
        return false;
    }
    state = newState;
    return true;
}

bool HostEngine::IsSuspendJobExecution() {
    return state.isPaused || static_cast<std::int32_t>(index.ActiveCount()) >= settings::Current()->parallelJobs;
}

/// Reads the settings file only if a job waits.
void HostEngine::SelectNextJob() {
    nextJob = jobList.end();
    if (!index.HasQueued() || IsSuspendJobExecution()) {
        return;
    }
    UseSchedulingRules();
    for (auto id = scheduler.Next(platform::Now()); id; id = scheduler.Next(platform::Now())) {
        const JobPosition job = index.WithId(*id)->position;
        if (queue::CanStart((*job)->GetStatus())) {
            nextJob = job;
            WriteRunContext(**job);
            return;
        }
        // It could not be started; the change of the list has yet to be told.
        EndForScheduler(*id, false, strandedAtStart);
    }
}

void HostEngine::UseSchedulingRules() {
    if (const auto current = settings::Current(); current != schedulingSettings) {
        constexpr std::int64_t secondsOfMinute = 60;
        schedulingSettings = current;
        scheduler.SetRules({current->resources, current->ageingMinutes * secondsOfMinute});
    }
}

std::optional<std::int64_t> HostEngine::NextStartTime() {
    const std::lock_guard lock(mutex);
    return index.HasQueued() && !IsSuspendJobExecution() ? scheduler.NextTime() : std::nullopt;
}

void HostEngine::Schedule(JobListChange& change) {
    std::vector<Scheduler::Stranded> stranded = std::exchange(strandedAtStart, {});
    for (const auto& job : change.deleted) {
        EndForScheduler(job->GetId(), false, stranded);
    }
    for (const auto& job : change.jobs) {
        ReportToScheduler(*job, stranded);
    }
    for (const Scheduler::Stranded& job : stranded) {
        EndStranded(job, change);
    }
}

void HostEngine::ReportToScheduler(JobEntry& job, std::vector<Scheduler::Stranded>& stranded) {
    const auto listed = index.WithId(job.GetId());
    if (job.GetStatus() == JobStatus::Queued && listed) {
        const QueueRecord& record = QueueRecordOf(job);
        scheduler.Wait({job.GetId(), listed->order, record.queuedTime, static_cast<const Scheduling&>(record)});
        ResolveEndedPredecessors(record, stranded);
    } else if (IsActive(job.GetStatus())) {
        if (auto* const entry = dynamic_cast<HostJobEntry*>(&job)) {
            entry->NoteStart(platform::Now());
        }
        scheduler.Start(job.GetId());
    } else {
        EndForScheduler(job.GetId(), job.GetStatus() == JobStatus::Success, stranded);
    }
}

/// A predecessor that is no longer listed had succeeded: the deletion of any other one ends those that wait for it.
void HostEngine::ResolveEndedPredecessors(const Scheduling& scheduling, std::vector<Scheduler::Stranded>& stranded) {
    for (const auto* const predecessors : {&scheduling.after, &scheduling.afterEnd}) {
        for (const std::wstring& id : *predecessors) {
            const auto listed = index.WithId(id);
            const JobStatus status = listed ? (*listed->position)->GetStatus() : JobStatus::Success;
            if (IsOver(status)) {
                EndForScheduler(id, status == JobStatus::Success, stranded);
            }
        }
    }
}

void HostEngine::EndForScheduler(const std::wstring& id, bool hasSucceeded,
                                 std::vector<Scheduler::Stranded>& stranded) {
    const std::vector<Scheduler::Stranded> ended = scheduler.End(id, hasSucceeded);
    stranded.insert(stranded.end(), ended.begin(), ended.end());
}

void HostEngine::EndStranded(const Scheduler::Stranded& stranded, JobListChange& change) {
    const auto listed = index.WithId(stranded.id);
    if (!listed) {
        return;
    }
    const std::shared_ptr<JobEntry>& job = *listed->position;
    const auto predecessor = index.WithId(stranded.predecessor);
    const std::wstring reason =
        (predecessor ? L"Job " + numbers::DecimalText((*predecessor->position)->GetSeqId()) : L"A deleted job") +
        L", which had to succeed before, has not.";
    ControllerLogManager::Log(L"Job: " + numbers::DecimalText(job->GetSeqId()) + L" is not started: " + reason);
    job->SetFailure(reason);
    job->ChangeStatus(stranded.isSkipped ? JobStatus::Dequeued : JobStatus::Failed);
    job->SetEndTime(platform::Now());
    index.Update(*job);
    change.jobs.push_back(job);
    strandedReports.push_back(job->GetJobStatusInfo());
}

/// Jobs that were running when an earlier host ended and are queued now have to forget that run.
void HostEngine::ScheduleListedJobs() {
    JobListChange change;
    for (const auto& job : jobList) {
        if (job->GetStatus() != JobStatus::Queued) {
            continue;
        }
        if (auto* const entry = dynamic_cast<HostJobEntry*>(job.get());
            entry != nullptr && !entry->GetJobListInfo().startTime.empty()) {
            entry->Requeue();
        }
        change.jobs.push_back(job);
    }
    Schedule(change);
    hasChanges = !change.jobs.empty();
}

void HostEngine::StopAtEnd(std::vector<JobStatusInfo>& cancelled) {
    const settings::AfterRestart rule = settings::Current()->afterRestart;
    if (rule == settings::AfterRestart::Cancel) {
        CancelAllJobs(cancelled, false);
        return;
    }
    std::vector<std::wstring> cancels;
    for (const JobPosition job : index.Active()) {
        if (rule == settings::AfterRestart::All && (*job)->GetStatus() == JobStatus::Running) {
            Interrupt(**job);
        } else {
            cancels.push_back((*job)->GetId());
        }
    }
    CancelJobs(cancels, cancelled, false);
}

void HostEngine::Interrupt(JobEntry& job) {
    if (auto* const entry = dynamic_cast<HostJobEntry*>(&job)) {
        std::wstring answer;
        // A module without that function finds the request to stop in the work directory.
        (void)CallModule(*functionManager, "CancelScenario", entry->GetId(), answer, nullptr,
                         "interrupted Job: " + std::to_string(entry->GetSeqId()));
        entry->Interrupt();
    }
}
