#pragma once

#include "modules/CallbackFunctor.h"
#include "modules/EventTransmitter.h"
#include "platform/Waiting.h"

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

/// Collects requests from the transmitter's thread for the host's loop.
class RequestInbox {
public:
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

    bool Add(Request request);

    EventTransmitter& transmitter;
    std::mutex mutex;
    std::deque<Request> requests;
    platform::Event arrived;
    std::vector<std::unique_ptr<Handler>> handlers;
};
