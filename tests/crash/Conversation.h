#pragma once

#include "CommonControllerLib/CallbackFunctor.h"
#include "CommonControllerLib/EventTransmitter.h"
#include "CommonControllerLib/JobRecords.h"
#include "controller_plugins/EventTransmitterExtension.h"
#include "platform/processes/Waiting.h"

#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace crash {

/// A front end that talks to one host after another and is not surprised when one dies in the middle of an answer.
/// Whatever does not come from a living host within the tests' patience throws std::runtime_error.
class Conversation {
public:
    using Told = std::function<void(const std::vector<JobStatusInfo>&)>;

    /// `tell` is given every change of jobs that a host tells, in order, by the operations below.
    Conversation(const std::wstring& endpointName, Told tell);
    ~Conversation();
    Conversation(const Conversation&) = delete;
    Conversation& operator=(const Conversation&) = delete;

    /// From now on talks to the host that has just started; what an earlier one sent is ignored. False when it died.
    [[nodiscard]] bool Meet(void* process);

    /// Sends a request and does not wait.
    void Send(const std::wstring& request, const std::wstring& content);
    /// The content of the answer; nothing when the host died before.
    [[nodiscard]] std::optional<std::wstring> Ask(const std::wstring& request, const std::wstring& content,
                                                  const std::wstring& answer);
    /// Waits for changes of jobs until `isReached`; false when the host died before.
    [[nodiscard]] bool AwaitChanges(const std::function<bool()>& isReached);
    /// Takes in what a host that has died said last, if it was met at all.
    void HearLastWords();

private:
    class Listener;
    struct Event {
        EventTransmitterExtension::Peer peer;
        std::wstring name;
        std::wstring content;
    };

    void Keep(Event event);
    /// The next event of the host; nothing when it died and has said all.
    [[nodiscard]] std::optional<Event> Next();
    [[nodiscard]] std::optional<Event> TakeKept();
    /// The same for an event of this name. Changes of jobs on the way are told.
    [[nodiscard]] std::optional<Event> NextNamed(const std::wstring& name);

    EventTransmitter* transmitter;
    EventTransmitterExtension* extension;
    Told tellChanges;
    void* host = nullptr;
    /// The host's; 0 while it is not known yet.
    EventTransmitterExtension::Peer hostPeer = 0;
    std::uint64_t meetings = 0;
    std::vector<std::unique_ptr<Listener>> listeners;
    std::mutex mutex;
    std::deque<Event> events;
    platform::Event arrived;
};

} // namespace crash
