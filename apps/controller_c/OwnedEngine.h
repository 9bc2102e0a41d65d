#pragma once

#include "CommonControllerLib/FunctionManager.h"
#include "controller_host/HostPlace.h"
#include "formats/Scheduling.h"
#include "services/Settings.h"

#include <chrono>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <vector>

class HostEngine;

namespace controller_c {

/// A host's engine with what belongs to it: settings, lock of the job list, function modules. All operations throw
/// `Failure`. Threads: any, except for `Close` and the destructor.
class OwnedEngine {
public:
    /// An empty `settingsFile` selects the settings as a host does.
    explicit OwnedEngine(const std::wstring& settingsFile);
    ~OwnedEngine();
    OwnedEngine(const OwnedEngine&) = delete;
    OwnedEngine& operator=(const OwnedEngine&) = delete;

    /// Stops the running jobs, waits for their end and writes the list. The last call.
    void Close();

    /// The job of one input set; the defaults with a reason for a rejected one.
    struct EnqueuedJob {
        std::int32_t number = -1;
        std::wstring id = {};
        std::wstring reason = {};
    };
    /// Enqueues the jobs of the text of a jobs file and returns one element per input set.
    std::vector<EnqueuedJob> Enqueue(std::string jobsFile);

    /// Does one turn of the engine's work.
    void Step();
    /// Returns the jobs that have changed since the last call.
    std::vector<ListedJob> TakeChanged();

    /// The jobs that have one of the names `jobs` ("all", or numbers and ids between commas), in list order. Fails if
    /// a name is unknown.
    std::vector<ListedJob> Rows(const std::wstring& jobs);

    /// Works until all `jobs` have ended or the time is over. Returns true if they have ended.
    [[nodiscard]] bool Wait(const std::vector<ListedJob>& jobs, std::optional<std::chrono::milliseconds> timeout);
    /// The jobs that are still listed.
    std::vector<ListedJob> StillListed(const std::vector<ListedJob>& jobs);

    /// Returns the jobs that were cancelled.
    std::vector<ListedJob> Cancel(const std::vector<ListedJob>& jobs);
    /// Returns the ids of the jobs that were deleted.
    std::vector<std::wstring> Delete(const std::vector<ListedJob>& jobs);
    std::vector<ScenarioInfo> Scenarios();

private:
    void LoadModules(const settings::Settings& settings);
    void LoadJobs(const settings::Settings& settings);
    void Turn();
    void WatchJobs();
    void StartJobs();
    void KeepList();
    void Note(const std::vector<JobStatusInfo>& changed);
    bool HaveEnded(const std::vector<ListedJob>& jobs);
    void WaitForChange(std::chrono::milliseconds limit);
    void WaitForProcesses(std::chrono::milliseconds limit);

    HostPlace place;
    FunctionManager modules{std::vector<std::wstring>()};
    std::unique_ptr<HostEngine> engine;
    /// The ids of the jobs that have changed since `TakeChanged`.
    std::set<std::wstring> changedJobs;
    /// Held for every use of the engine.
    std::mutex operation;
    /// Held by the thread that works and waits; process handles of jobs are closed under it only. Taken before
    /// `operation`.
    std::mutex turns;
};

} // namespace controller_c
