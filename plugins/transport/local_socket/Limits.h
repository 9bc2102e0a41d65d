#pragma once

#include <chrono>
#include <cstddef>

#include "transport/event_delivery/Acknowledgements.h"

namespace local_socket {

inline constexpr std::size_t maximumNameBytes = 256;
inline constexpr std::size_t maximumPayloadBytes = std::size_t{256} << 20;

/// Bytes read or written by one system call; also the size of a pipe's buffers.
inline constexpr std::size_t chunkBytes = std::size_t{64} << 10;

/// What a queued event costs besides its bytes, so that a limit in bytes also limits how many there are.
inline constexpr std::size_t queuedEventOverhead = 256;

/// How long a front end waits for an engine that has no room for another one yet.
inline constexpr std::chrono::milliseconds busyPatience{2000};

/// How long the end of the process waits for a handler that runs.
inline constexpr std::chrono::milliseconds handlerPatience{2000};

/// What one end allows its peers. Tests make them small.
struct Limits {
    /// From the connection to the peer's whole greeting.
    std::chrono::milliseconds handshake{5000};
    /// Without a byte in the middle of a frame.
    std::chrono::milliseconds stall{5000};
    /// At the end of a transmitter: until its peers have taken what was sent to them.
    std::chrono::milliseconds drain{2000};
    /// From the sending of an event until its acknowledgement.
    std::chrono::milliseconds acknowledgement = event_delivery::acknowledgementTimeout;
    /// Sent to one peer and not yet taken by it, besides the frame that is on its way.
    std::size_t outgoingBytes = std::size_t{64} << 20;
    /// Received from one peer and not yet handled; no more is read from it until some of it is.
    std::size_t undeliveredBytes = std::size_t{16} << 20;
    /// Front ends connected to one engine at the same time.
    std::size_t peers = 256;
};

} // namespace local_socket
