#pragma once

#include "CommonControllerLib/CallbackFunctor.h"
#include "controller_host/EngineTransmitter.h"
#include "platform/processes/Waiting.h"

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

/// One request of a front end.
struct Request {
    EngineTransmitter::Peer peer = 0;
    std::wstring name;
    std::wstring payload;
    /// To be given behind the answer.
    EngineTransmitter::Acknowledgement acknowledgement = 0;
};

/// Collects requests from the transmitter's thread for the host's loop. When front ends send faster than they are
/// answered, that thread waits beyond a number of requests and of characters, so that none can use up the host's memory
/// and no request is lost.
class RequestQueue {
public:
    static constexpr std::size_t requestLimit = 10000;
    /// In all payloads that wait; a larger one is taken when nothing else waits.
    static constexpr std::size_t characterLimit = std::size_t{16} << 20;

    /// Takes in every event that `names` lists, none before it can take all. `eventTransmitter` outlives the queue.
    RequestQueue(EngineTransmitter& eventTransmitter, const std::vector<std::wstring>& names);
    /// Takes its handlers away again; what lies here or waits for room is dropped.
    ~RequestQueue();
    RequestQueue(const RequestQueue&) = delete;
    RequestQueue& operator=(const RequestQueue&) = delete;

    /// Signalled while a request lies here.
    void* Arrived() const { return arrived.Handle(); }

    /// All requests so far, in order of arrival.
    std::deque<Request> TakeAll();

private:
    class Handler;

    /// Waits for room; false when the queue ends before there is any.
    [[nodiscard]] bool Add(Request request);
    bool HasRoomFor(const Request& request) const;

    EngineTransmitter& transmitter;
    std::mutex mutex;
    std::condition_variable changed;
    bool hasEnded = false;
    std::deque<Request> requests;
    /// In the payloads of `requests`.
    std::size_t characters = 0;
    platform::Event arrived;
    std::vector<std::unique_ptr<Handler>> handlers;
};
