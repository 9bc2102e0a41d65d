#include "controller_c/OwnedEngine.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "CommonControllerLib/ControllerLogManager.h"
#include "controller_c/Failure.h"
#include "controller_c/controller_c.h"
#include "controller_host/DeletionJournal.h"
#include "controller_host/EnqueueWithReasons.h"
#include "controller_host/HostEngine.h"
#include "controller_host/OrphanCleanup.h"
#include "controller_host/OtherHost.h"
#include "formats/JobListFile.h"
#include "formats/JobStates.h"
#include "formats/JobsFile.h"
#include "front_end/command_line/NamesInText.h"
#include "modules/StartChecks.h"
#include "platform/files/NativePath.h"
#include "platform/processes/Waiting.h"
#include "platform/system/Sleep.h"

namespace controller_c {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

/// Another process that looks whether a host runs may hold the lock for a moment.
constexpr milliseconds lockTimeout{200};
/// The interval for reading progress files, and for a thread that waits while another one works.
constexpr milliseconds progressInterval{200};
constexpr milliseconds otherThreadInterval{20};
/// The time without a change after which the journal of the list is folded.
constexpr milliseconds idleTime{1000};
/// For the exit of runners after the grace time of their scenarios.
constexpr std::chrono::seconds exitTime{5};

[[noreturn]] void Fail(std::int32_t result, const std::wstring& text) {
    ControllerLogManager::ErrorLog(text);
    throw Failure{result, text};
}

std::shared_ptr<const settings::Settings> UseSettings(const std::wstring& file) {
    settings::UseFile(file);
    if (const std::wstring problem = settings::Problem(); !problem.empty()) {
        throw Failure{CONTROLLER_RESULT_FAILED, problem};
    }
    auto settings = settings::FrozenForProcess();
    ControllerLogManager::Initialize(0, settings->logFile, false);
    return settings;
}

void TakePlace(const settings::Settings& settings, HostPlace& place) {
    if (const platform::Error result = place.Take(settings, lockTimeout); !result) {
        if (result.kind == platform::ErrorKind::InUse) {
            Fail(CONTROLLER_RESULT_IN_USE, OtherHostProblem(settings));
        }
        Fail(CONTROLLER_RESULT_FAILED, L"The lock beside the job list " + platform::ToNativeText(settings.jobListFile) +
                                           L" cannot be taken: " + result.Text());
    }
}

std::vector<std::wstring> IdsOf(const std::vector<ListedJob>& jobs) {
    std::vector<std::wstring> ids;
    std::transform(jobs.begin(), jobs.end(), std::back_inserter(ids), [](const ListedJob& job) { return job.id; });
    return ids;
}

std::vector<std::wstring> IdsOf(const std::vector<JobStatusInfo>& jobs) {
    std::vector<std::wstring> ids;
    std::transform(jobs.begin(), jobs.end(), std::back_inserter(ids), [](const JobStatusInfo& job) { return job.id; });
    return ids;
}

/// A query without names would mean all jobs.
std::vector<ListedJob> RowsOf(HostEngine& engine, std::vector<std::wstring> ids) {
    return ids.empty() ? std::vector<ListedJob>() : engine.Rows({std::move(ids), 0, 0});
}

std::set<std::wstring> NamesIn(const std::wstring& jobs) {
    const std::vector<std::wstring> list = front_end::NamesInText(jobs);
    if (list.empty()) {
        throw Failure{CONTROLLER_RESULT_BAD_ARGUMENT,
                      L"No job is named: give numbers or ids with commas between them, or \"all\"."};
    }
    return {list.begin(), list.end()};
}

std::vector<OwnedEngine::EnqueuedJob> AnswerOf(const JobEnqueueResult& result) {
    std::vector<OwnedEngine::EnqueuedJob> answer(std::max(result.jobIds.size(), result.inputSetResults.size()));
    for (std::size_t i = 0; i < answer.size(); ++i) {
        if (i < result.jobIds.size() && !result.jobIds[i].id.empty()) {
            answer[i] = {result.jobIds[i].seqId, result.jobIds[i].id, {}};
        } else if (i < result.inputSetResults.size() && !result.inputSetResults[i].empty()) {
            answer[i].reason = result.inputSetResults[i].front();
        }
    }
    return answer;
}

} // namespace

OwnedEngine::OwnedEngine(const std::wstring& settingsFile) {
    const auto settings = UseSettings(settingsFile);
    TakePlace(*settings, place);
    LoadModules(*settings);
    LoadJobs(*settings);
}

OwnedEngine::~OwnedEngine() = default;

void OwnedEngine::LoadModules(const settings::Settings& settings) {
    start_checks::ProvideModuleLibraries(settings);
    std::wstring problems;
    for (const std::wstring& problem : start_checks::LoadFunctionModules(settings, modules)) {
        ControllerLogManager::WarnLog(problem);
        problems += L" " + problem;
    }
    if (!modules.HasFunction("RunScenario")) {
        Fail(CONTROLLER_RESULT_FAILED,
             L"No function module can run scenarios: check \"functionModules\" of the settings." + problems);
    }
}

void OwnedEngine::LoadJobs(const settings::Settings& settings) {
    if (std::wstring problem; !job_list_file::CheckUsable(settings.jobListFile, problem)) {
        Fail(CONTROLLER_RESULT_FAILED, L"The job list cannot be used, and is left as it is: " + problem);
    }
    job_list_file::RemoveLeftovers(settings.jobListFile);
    job_list_file::RemoveLeftovers(DeletionJournal::FileBeside(settings.jobListFile));
    StopOrphanCleanup(settings.jobListFile);
    EndLostRuns(modules);
    engine = std::make_unique<HostEngine>(&modules);
    engine->FinishDeletions();
    engine->DeleteOldJobsDurably();
    engine->UpdateCatalogue();
}

void OwnedEngine::Close() {
    const std::lock_guard lock(operation);
    std::vector<JobStatusInfo> cancelled;
    engine->StopAtEnd(cancelled);
    const auto end = steady_clock::now() + std::chrono::seconds(settings::Current()->cancelGraceSeconds) + exitTime;
    while (engine->HasActiveJobs() && steady_clock::now() < end) {
        WatchJobs();
        WaitForProcesses(progressInterval);
    }
    engine->Terminate();
    engine->EndJournal();
}

std::vector<OwnedEngine::EnqueuedJob> OwnedEngine::Enqueue(std::string jobsFile) {
    std::vector<ScheduledRequest> requests;
    std::wstring problem;
    if (!jobs_file::ReadText(std::move(jobsFile), L"the jobs", requests, problem)) {
        throw Failure{CONTROLLER_RESULT_BAD_ARGUMENT, problem};
    }
    const std::lock_guard lock(operation);
    std::vector<EnqueuedJob> answer;
    for (ScheduledRequest& request : requests) {
        const std::vector<EnqueuedJob> jobs = AnswerOf(EnqueueWithReasons(*engine, request));
        answer.insert(answer.end(), jobs.begin(), jobs.end());
    }
    engine->FlushJobList();
    return answer;
}

/// While another thread waits for jobs, it does the work.
void OwnedEngine::Step() {
    const std::unique_lock mine(turns, std::try_to_lock);
    if (mine.owns_lock()) {
        Turn();
    }
}

std::vector<ListedJob> OwnedEngine::TakeChanged() {
    const std::lock_guard lock(operation);
    const std::set<std::wstring> ids = std::exchange(changedJobs, {});
    return RowsOf(*engine, {ids.begin(), ids.end()});
}

std::vector<ListedJob> OwnedEngine::Rows(const std::wstring& jobs) {
    const std::lock_guard lock(operation);
    if (jobs == L"all") {
        return engine->Rows();
    }
    std::set<std::wstring> names = NamesIn(jobs);
    std::vector<ListedJob> rows = engine->Rows({{names.begin(), names.end()}, 0, 0});
    for (const ListedJob& row : rows) {
        names.erase(row.id);
        names.erase(std::to_wstring(row.seqId));
    }
    if (!names.empty()) {
        throw Failure{CONTROLLER_RESULT_BAD_ARGUMENT, L"There is no job " + *names.begin() + L" in the list."};
    }
    return rows;
}

bool OwnedEngine::Wait(const std::vector<ListedJob>& jobs, std::optional<milliseconds> timeout) {
    const auto start = steady_clock::now();
    Step();
    while (!HaveEnded(jobs)) {
        milliseconds limit = progressInterval;
        if (timeout) {
            const auto gone = std::chrono::duration_cast<milliseconds>(steady_clock::now() - start);
            if (gone >= *timeout) {
                return false;
            }
            limit = std::min(limit, *timeout - gone);
        }
        WaitForChange(limit);
    }
    return true;
}

void OwnedEngine::WaitForChange(milliseconds limit) {
    const std::unique_lock mine(turns, std::try_to_lock);
    if (!mine.owns_lock()) {
        platform::SleepFor(std::min(limit, otherThreadInterval));
        return;
    }
    WaitForProcesses(limit);
    Turn();
}

void OwnedEngine::WaitForProcesses(milliseconds limit) {
    const std::vector<void*> processes = engine->ActiveProcesses();
    if (processes.empty()) {
        platform::SleepFor(limit);
    } else {
        platform::WaitForAny(processes, limit);
    }
}

bool OwnedEngine::HaveEnded(const std::vector<ListedJob>& jobs) {
    const std::vector<ListedJob> rows = StillListed(jobs);
    return std::all_of(rows.begin(), rows.end(), [](const ListedJob& job) { return IsOver(job.status); });
}

std::vector<ListedJob> OwnedEngine::StillListed(const std::vector<ListedJob>& jobs) {
    const std::lock_guard lock(operation);
    return RowsOf(*engine, IdsOf(jobs));
}

std::vector<ListedJob> OwnedEngine::Cancel(const std::vector<ListedJob>& jobs) {
    const std::lock_guard lock(operation);
    std::vector<std::wstring> ids = IdsOf(jobs);
    std::vector<JobStatusInfo> cancelled;
    engine->CancelJobs(ids, cancelled, false);
    Note(cancelled);
    engine->FlushJobList();
    return RowsOf(*engine, IdsOf(cancelled));
}

std::vector<std::wstring> OwnedEngine::Delete(const std::vector<ListedJob>& jobs) {
    const std::lock_guard lock(operation);
    std::vector<std::wstring> ids = IdsOf(jobs);
    std::vector<std::wstring> deleted;
    engine->DeleteJobsDurably(ids, deleted);
    engine->FlushJobList();
    return deleted;
}

std::vector<ScenarioInfo> OwnedEngine::Scenarios() {
    const std::lock_guard lock(operation);
    return engine->UpdateCatalogue();
}

void OwnedEngine::Turn() {
    const std::lock_guard lock(operation);
    WatchJobs();
    StartJobs();
    Note(engine->TakeStranded());
    KeepList();
}

void OwnedEngine::WatchJobs() {
    std::vector<JobStatusInfo> changed;
    if (engine->CheckUpdate(changed)) {
        KillOrphans(changed);
        Note(changed);
    }
}

/// Each start is in the list before the next one.
void OwnedEngine::StartJobs() {
    std::vector<JobStatusInfo> updated;
    while (engine->ExecuteJob(nullptr, updated)) {
        Note(updated);
        updated.clear();
    }
}

void OwnedEngine::Note(const std::vector<JobStatusInfo>& changed) {
    engine->ExplainFailures(changed);
    for (const JobStatusInfo& job : changed) {
        changedJobs.insert(job.id);
    }
}

void OwnedEngine::KeepList() {
    engine->FlushJobList();
    const bool isIdle = !engine->HasActiveJobs() && steady_clock::now() - engine->LastChange() >= idleTime;
    if (isIdle || job_list_file::IsUnwritten()) {
        engine->FoldJournal();
    }
}

} // namespace controller_c
