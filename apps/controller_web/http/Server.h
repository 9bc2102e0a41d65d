#pragma once

#include "controller_web/http/Site.h"
#include "platform/system/Error.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>

namespace web {

struct ServerLimits {
    /// The size of all headers of a request. Units: bytes.
    std::uint32_t header = 16U << 10;
    std::size_t connections = 256;
    /// Connections that receive texts as they come; each is counted as a connection, too.
    std::size_t feeds = 64;
    /// Uploads that arrive at the same time.
    std::size_t uploads = 8;
    /// Threads that run the handler, and read and write files.
    std::size_t workers = 4;

    /// The time between two requests of a connection.
    std::chrono::milliseconds idle{60'000};
    /// The time for all headers of a request.
    std::chrono::milliseconds headerTime{10'000};
    /// The time in which some bytes of a body must arrive.
    std::chrono::milliseconds bodyTime{10'000};
    /// The time in which some bytes of a response must be taken.
    std::chrono::milliseconds writeTime{20'000};
    /// The time to read on after a refusal, so that the sender can read the answer.
    std::chrono::milliseconds lingerTime{2'000};
    /// The time without a text after which a feed of events gets a comment.
    std::chrono::milliseconds heartbeat{15'000};
    /// The time that requests have to end when the server stops.
    std::chrono::milliseconds stopTime{3'000};
};

/// An HTTP/1.1 server on the loopback address 127.0.0.1, with one thread for all connections and some for the handler.
class Server {
public:
    /// Tells whether a program at a port of this machine may connect.
    using PeerCheck = std::function<bool(std::uint16_t ownPort, std::uint16_t peerPort)>;

    /// Without a check, each program may connect. The check is called on the thread of the server.
    explicit Server(const ServerLimits& limits = {}, PeerCheck acceptsPeer = {});
    ~Server();
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    /// Listens at this port, or at any free one if it is 0. Fails with `InUse` if another program has it.
    [[nodiscard]] platform::Error Listen(std::uint16_t port);

    /// The port at which it listens.
    std::uint16_t Port() const;

    /// Serves requests until `Stop` was called and the connections have ended. `Listen` has succeeded. Called once.
    void Run(Site& site);

    /// Accepts no further requests and has `Run` return soon: feeds end, other requests get the time of the limits.
    /// Threads: any.
    void Stop();

private:
    struct State;
    std::unique_ptr<State> state;
};

} // namespace web
