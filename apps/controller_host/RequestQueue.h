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
    /// To be given after the answer.
    EngineTransmitter::Acknowledgement acknowledgement = 0;
};

/// Passes requests from the transmitter's thread to the host's loop. Above a limit of requests or characters the
/// transmitter's thread waits: front ends that send faster than they are answered cannot exhaust the host's memory, and
/// no request is lost.
class RequestQueue {
public:
    static constexpr std::size_t requestLimit = 10000;
    /// Limit for the payloads of all waiting requests. A larger request is accepted if no other waits.
    static constexpr std::size_t characterLimit = std::size_t{16} << 20;

    /// Registers handlers for all events in `names`; none of them is called before all are registered.
    /// `eventTransmitter` must outlive the queue.
    RequestQueue(EngineTransmitter& eventTransmitter, const std::vector<std::wstring>& names);
    /// Removes its handlers. Drops requests that are queued or wait for room.
    ~RequestQueue();
    RequestQueue(const RequestQueue&) = delete;
    RequestQueue& operator=(const RequestQueue&) = delete;

    /// Signalled while the queue is not empty.
    void* Readable() const { return arrived.Handle(); }

    /// Removes and returns all requests, in order of arrival.
    std::deque<Request> TakeAll();

private:
    class Handler;

    /// Waits for room. Returns false if the queue is destroyed first.
    [[nodiscard]] bool Add(Request request);
    bool HasRoomFor(const Request& request) const;

    EngineTransmitter& transmitter;
    std::mutex mutex;
    std::condition_variable changed;
    bool hasEnded = false;
    std::deque<Request> requests;
    /// Total characters of the payloads in `requests`.
    std::size_t characters = 0;
    platform::Event arrived;
    std::vector<std::unique_ptr<Handler>> handlers;
};
