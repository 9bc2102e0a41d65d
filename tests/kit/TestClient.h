#pragma once

#include "CommonControllerLib/EventTransmitter.h"
#include "CommonControllerLib/JobRecords.h"
#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "controller_plugins/EventTransmitterExtension.h"
#include "formats/Scheduling.h"
#include "platform/processes/Waiting.h"
#include "text/Text.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

/// A front end in the test's process: communicates with a host through the real transmitter module and records all
/// reported changes. A response that does not arrive in time, or an unexpected refusal, throws std::runtime_error. One
/// thread.
class TestClient {
public:
    using Told = std::function<void(const std::vector<JobStatusInfo>&)>;

    /// `endpointName` is the host's. `tell` receives each change of jobs, in order, while the operations below run.
    explicit TestClient(const std::wstring& endpointName, Told tell = {});
    ~TestClient();
    TestClient(const TestClient&) = delete;
    TestClient& operator=(const TestClient&) = delete;

    /// The transmitter that all presenters of this process share for the endpoint.
    EventTransmitter* Transmitter() const { return transmitter; }

    /// Sends a request and returns the content of its response.
    std::wstring Ask(const std::wstring& request, const std::wstring& content, const std::wstring& answer);
    /// The jobs that a request created, one element per input set.
    JobEnqueueResult Enqueue(const ScheduledRequest& request);
    /// Changes waiting jobs; others are ignored.
    void Edit(const JobsEdit& edit);
    /// Sends the requests of a jobs file, and returns the created jobs.
    std::vector<JobIdInfo> Enqueue(const std::wstring& jobsFile);
    /// The whole list.
    std::vector<JobListInfo> Jobs();
    void Cancel(const std::wstring& jobId);
    /// The ids of the jobs that were deleted.
    std::vector<std::wstring> Delete(const std::vector<std::wstring>& jobIds);
    /// Asks the host to end and waits for its confirmation.
    void Terminate();

    /// Waits until the host reports this status of a job.
    JobStatusInfo AwaitStatus(const std::wstring& jobId, JobStatus status);
    /// The changes since the last call, in order; empty if there are none within `longest`.
    std::vector<JobStatusInfo> NextUpdates(std::chrono::milliseconds longest);

    // With a succession of hosts, each of which may die during a response

    /// Connects to a newly started host; events of earlier hosts are ignored. False if it died.
    [[nodiscard]] bool Meet(void* process);
    /// Sends a request without waiting.
    void Send(const std::wstring& request, const std::wstring& content);
    /// Like `Ask`; nothing if the host died before its response.
    [[nodiscard]] std::optional<std::wstring> TryAsk(const std::wstring& request, const std::wstring& content,
                                                     const std::wstring& answer);
    /// Waits for changes of jobs until `isReached`; false if the host died before.
    [[nodiscard]] bool AwaitChanges(const std::function<bool()>& isReached);
    /// Reads the last events of a dead host, if it was ever connected.
    void HearLastWords();

    /// Parses a content.
    template <class Value>
    static Value Read(const std::wstring& content) {
        Value value;
        if (!ControllerCSWrapper::Deserialize(content, value)) {
            throw std::runtime_error("cannot read " + text::ToUtf8(content));
        }
        return value;
    }

private:
    class Listener;
    struct Event {
        EventTransmitterExtension::Peer peer;
        std::wstring name;
        std::wstring content;
    };
    enum class Arrival { Event, HostDied, TimeIsOver };
    using Time = std::chrono::steady_clock::time_point;

    void Keep(Event event);
    [[nodiscard]] std::optional<Event> TakeKept();
    Arrival AwaitArrival(Time limit);
    /// The next event before `limit`; nothing if the host died and has no more events.
    [[nodiscard]] std::optional<Event> Next(const std::wstring& awaited, Time limit);
    /// The next event of this name. Changes of jobs before it are reported.
    [[nodiscard]] std::optional<Event> NextNamed(const std::wstring& name);
    void Hear(const Event& event);
    void HearKept();

    EventTransmitter* const transmitter;
    EventTransmitterExtension* const extension;
    const Told tellChanges;
    /// The connected host; null: any host, which stays alive.
    void* host = nullptr;
    /// Its peer number; 0 while unknown.
    EventTransmitterExtension::Peer hostPeer = 0;
    std::uint64_t meetings = 0;
    std::vector<JobStatusInfo> told;
    std::size_t handedOut = 0;
    std::vector<std::unique_ptr<Listener>> listeners;
    std::mutex mutex;
    std::deque<Event> events;
    platform::Event arrived;
};
