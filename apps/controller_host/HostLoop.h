#pragma once

#include "controller_host/HostEngine.h"
#include "controller_host/RequestHandler.h"
#include "controller_host/RequestQueue.h"

#include <chrono>

/// The host's one loop. It waits for requests, for the end of processes and for the wish to stop; while a job runs also
/// for the time to look at its progress file again, and while the job list cannot be written for the time to try again.
/// Requests are answered before the next jobs are started.
class HostLoop {
public:
    /// All outlive the loop. `stop` is a handle that is signalled when the host is to end.
    HostLoop(HostEngine& hostEngine, RequestQueue& requestQueue, RequestHandler& requestHandler, void* stopHandle)
        : engine(hostEngine), queue(requestQueue), answers(requestHandler), stop(stopHandle) {}

    /// Returns when the host is to end, with all jobs cancelled and their processes ended, or after `patience` for
    /// those that do not.
    void Run(std::chrono::milliseconds patience);

private:
    enum class Wake { Stop, Work };

    Wake WaitForWork();
    void AnswerRequests();
    void LookAtJobs();
    void StartJobs();
    void WriteListAgain();
    void EndJobs(std::chrono::milliseconds patience);

    HostEngine& engine;
    RequestQueue& queue;
    RequestHandler& answers;
    void* stop;
    std::chrono::steady_clock::time_point nextListWrite;
};
