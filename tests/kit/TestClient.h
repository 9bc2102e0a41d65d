#pragma once

#include "CommonControllerLib/EventTransmitter.h"
#include "CommonControllerLib/JobRecords.h"
#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "controller_plugins/EventTransmitterExtension.h"
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

/// A front end in the test's own process: it talks to a host through the real transmitter module and keeps all that it
/// is told of jobs. What it waits for and does not get within the tests' patience throws std::runtime_error, and so
/// does a refusal that it did not wait for. One thread.
class TestClient {
public:
    using Told = std::function<void(const std::vector<JobStatusInfo>&)>;

    /// `endpointName` is the host's. `tell` is given every change of jobs, in the host's order, as the operations below
    /// come upon it.
    explicit TestClient(const std::wstring& endpointName, Told tell = {});
    ~TestClient();
    TestClient(const TestClient&) = delete;
    TestClient& operator=(const TestClient&) = delete;

    /// The transmitter that all presenters of this process share for the endpoint.
    EventTransmitter* Transmitter() const { return transmitter; }

    /// Sends a request and gives the content of its answer.
    std::wstring Ask(const std::wstring& request, const std::wstring& content, const std::wstring& answer);
    /// The jobs that a request made, one element an input set.
    JobEnqueueResult Enqueue(const EnqueueJobsInfo& request);
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

    // With one host after another, each of which may die in the middle of an answer

    /// From now on talks to the host that has just started; what an earlier one sent is ignored. False when it died.
    [[nodiscard]] bool Meet(void* process);
    /// Sends a request and does not wait.
    void Send(const std::wstring& request, const std::wstring& content);
    /// As `Ask`; nothing when the host died before it answered.
    [[nodiscard]] std::optional<std::wstring> TryAsk(const std::wstring& request, const std::wstring& content,
                                                     const std::wstring& answer);
    /// Waits for changes of jobs until `isReached`; false when the host died before.
    [[nodiscard]] bool AwaitChanges(const std::function<bool()>& isReached);
    /// Takes in what a host that has died said last, if it was met at all.
    void HearLastWords();

    /// What a content says.
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
    /// The next event before `limit`; nothing when the host died and has said all.
    [[nodiscard]] std::optional<Event> Next(const std::wstring& awaited, Time limit);
    /// The same for an event of this name. Changes of jobs on the way are told.
    [[nodiscard]] std::optional<Event> NextNamed(const std::wstring& name);
    void Hear(const Event& event);
    void HearKept();

    EventTransmitter* const transmitter;
    EventTransmitterExtension* const extension;
    const Told tellChanges;
    /// The host that was met; null: any, which lives.
    void* host = nullptr;
    /// Its number; 0 while it is not known yet.
    EventTransmitterExtension::Peer hostPeer = 0;
    std::uint64_t meetings = 0;
    std::vector<JobStatusInfo> told;
    std::size_t handedOut = 0;
    std::vector<std::unique_ptr<Listener>> listeners;
    std::mutex mutex;
    std::deque<Event> events;
    platform::Event arrived;
};
