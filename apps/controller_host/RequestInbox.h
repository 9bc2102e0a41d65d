#pragma once

#include "modules/CallbackFunctor.h"
#include "modules/EventTransmitter.h"
#include "platform/Waiting.h"

#include <cstddef>
#include <deque>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

/// One request of a front end.
struct Request {
    EventTransmitter::Peer peer = 0;
    std::wstring name;
    std::wstring payload;
};

/// Collects requests from the transmitter's thread for the host's loop. What front ends send faster than it is answered
/// is refused beyond a number of requests and of characters, so that none can use up the host's memory.
class RequestInbox {
public:
    /// In all payloads that wait; a larger one is taken when nothing else waits.
    static constexpr std::size_t characterLimit = std::size_t{16} << 20;

    /// Takes in every event that `names` lists. `eventTransmitter` outlives the inbox.
    RequestInbox(EventTransmitter& eventTransmitter, const std::vector<std::wstring>& names);
    /// Takes its handlers away again.
    ~RequestInbox();
    RequestInbox(const RequestInbox&) = delete;
    RequestInbox& operator=(const RequestInbox&) = delete;

    /// Signalled while a request lies here.
    void* Arrived() const { return arrived.Handle(); }

    /// All requests so far, in order of arrival.
    std::deque<Request> TakeAll();

private:
    class Handler;

    [[nodiscard]] bool Add(Request request);

    EventTransmitter& transmitter;
    std::mutex mutex;
    std::deque<Request> requests;
    /// In the payloads of `requests`.
    std::size_t characters = 0;
    platform::Event arrived;
    std::vector<std::unique_ptr<Handler>> handlers;
};
