#pragma once

#include "CommonControllerLib/CallbackFunctor.h"
#include "CommonControllerLib/EventTransmitter.h"
#include "CommonControllerLib/JobRecords.h"
#include "controller_plugins/EventTransmitterExtension.h"

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

/// A front end in the test's own process: it talks to a host through the real transmitter module and keeps all that it
/// is told. What it waits for and does not get within the tests' patience throws std::runtime_error.
class FrontEnd {
public:
    /// `endpointName` is the host's, which is there already.
    explicit FrontEnd(const std::wstring& endpointName);
    ~FrontEnd();
    FrontEnd(const FrontEnd&) = delete;
    FrontEnd& operator=(const FrontEnd&) = delete;

    /// The transmitter that all presenters of this process share for the endpoint.
    EventTransmitter* Transmitter() const { return transmitter; }

    /// Sends a request and gives the content of its answer.
    std::wstring Ask(const std::wstring& request, const std::wstring& content, const std::wstring& answer);

    /// The jobs that a request made, one element an input set.
    std::vector<JobIdInfo> Enqueue(const EnqueueJobsInfo& request);
    /// Sends the requests of a jobs file; the jobs that they made.
    std::vector<JobIdInfo> Enqueue(const std::wstring& jobsFile);
    /// The whole list.
    std::vector<JobListInfo> Jobs();
    void Cancel(const std::wstring& jobId);
    /// The ids of the jobs that were deleted.
    std::vector<std::wstring> Delete(const std::vector<std::wstring>& jobIds);
    /// Asks the host to end and waits for its word that it will.
    void Terminate();

    /// Waits until the host has told that a job has this status.
    JobStatusInfo AwaitStatus(const std::wstring& jobId, JobStatus status);
    /// What the host has told of jobs since the last call, in its order; nothing when it told nothing for so long.
    std::vector<JobStatusInfo> NextUpdates(std::chrono::milliseconds longest);

private:
    class Listener;
    struct Event {
        std::wstring name;
        std::wstring content;
    };

    using Lock = std::unique_lock<std::mutex>;

    void Keep(Event event);
    std::size_t CountEvents() const;
    /// The content of the next event of this name, not before the position `from`, which is moved behind it.
    std::wstring AwaitEvent(const std::wstring& name, std::size_t& from);
    /// The same, under the lock; false when none comes in time.
    [[nodiscard]] bool FindEvent(Lock& lock, const std::wstring& name, std::chrono::milliseconds longest,
                                 std::size_t& from);

    EventTransmitter* transmitter;
    EventTransmitterExtension* extension;
    std::vector<std::unique_ptr<Listener>> listeners;
    mutable std::mutex mutex;
    std::condition_variable changed;
    std::vector<Event> events;
    std::size_t toldUpdates = 0;
};
