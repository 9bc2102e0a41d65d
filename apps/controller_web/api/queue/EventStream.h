#pragma once

#include "controller_web/http/Response.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace web {

/// The server-sent events of all clients. The last events are kept, so that a client can continue after an
/// interruption; one that has missed more gets the event "reset". Threads: any. Feeds may outlive this object.
class EventStream {
public:
    /// The most clients at a time, and what is kept for those that are behind.
    static constexpr std::size_t mostClients = 64;
    static constexpr std::size_t mostEvents = 1000;
    static constexpr std::size_t mostBytes = std::size_t{8} << 20;

    EventStream();

    /// Sends an event to all clients. `json` is on one line.
    void Publish(std::string_view type, std::string_view json);
    /// Has all clients fetch everything anew.
    void Reset();

    /// The events after the one with this id. Null if there are too many clients.
    std::unique_ptr<EventFeed> Open(const std::string& lastEventId);

    /// The id of the last event.
    std::string Position() const;
    std::size_t ClientCount() const;

private:
    class Feed;
    /// Outlives this object while there are feeds.
    struct Shared;

    std::shared_ptr<Shared> shared;
};

} // namespace web
