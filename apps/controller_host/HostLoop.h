#pragma once

#include "controller_host/HostEngine.h"
#include "controller_host/RequestHandler.h"
#include "controller_host/RequestQueue.h"
#include "controller_host/hooks/HookRunner.h"
#include "controller_host/hooks/Hooks.h"

#include <chrono>
#include <optional>

/// The host's only loop. It waits for requests, the end of processes, the time of a job that must not start earlier,
/// and the stop request. While a job runs, it also wakes up to read the progress file; while the job list cannot be
/// written, to retry the write. Requests are answered before further jobs are started.
class HostLoop {
public:
    /// All must outlive the loop. `stop` is a handle that is signalled when the host must end.
    HostLoop(HostEngine& hostEngine, RequestQueue& requestQueue, RequestHandler& requestHandler, void* stopHandle)
        : engine(hostEngine), queue(requestQueue), answers(requestHandler), stop(stopHandle) {}

    /// Returns when the host is asked to end: all jobs are cancelled and their processes have ended, or `timeout` has
    /// expired.
    void Run(std::chrono::milliseconds timeout);

private:
    enum class Wake { Stop, Work };

    Wake WaitForWork();
    std::optional<std::chrono::milliseconds> LongestWait(bool watching) const;
    void AnswerRequests();
    void LookAtJobs();
    void TellOfJobs(const std::vector<JobStatusInfo>& changed);
    void StartJobs();
    /// Broadcasts the jobs that have ended because of a predecessor.
    void ReportStranded();
    /// Flushes, retries and folds the job list when it is time.
    void KeepList();
    void EndJobs(std::chrono::milliseconds timeout);

    HostEngine& engine;
    RequestQueue& queue;
    RequestHandler& answers;
    void* stop;
    HookRunner hookRunner;
    Hooks hooks{engine, [this](HookCall call) { hookRunner.Run(std::move(call)); }};
    std::chrono::steady_clock::time_point nextListWrite;
};
