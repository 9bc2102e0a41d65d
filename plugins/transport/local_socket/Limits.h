#pragma once

#include <chrono>
#include <cstddef>

#include "transport/event_delivery/Acknowledgements.h"

namespace local_socket {

inline constexpr std::size_t maximumNameBytes = 256;
inline constexpr std::size_t maximumPayloadBytes = std::size_t{256} << 20;

/// Bytes per read or write call; also the size of a pipe's buffers.
inline constexpr std::size_t chunkBytes = std::size_t{64} << 10;

/// Overhead charged per queued event, so that a limit in bytes also limits their number.
inline constexpr std::size_t queuedEventOverhead = 256;

/// How long a client waits for a server that has no room for another client.
inline constexpr std::chrono::milliseconds busyTimeout{2000};

/// How long the process exit waits for a running handler.
inline constexpr std::chrono::milliseconds handlerTimeout{2000};

/// Limits that one endpoint applies to its peers. Tests make them small.
struct Limits {
    /// From the connection to the end of the peer's handshake.
    std::chrono::milliseconds handshake{5000};
    /// Without a byte received within a frame.
    std::chrono::milliseconds stall{5000};
    /// At the end of a transmitter: until its peers have taken what was sent to them.
    std::chrono::milliseconds drain{2000};
    /// From sending an event to its acknowledgement.
    std::chrono::milliseconds acknowledgement = event_delivery::acknowledgementTimeout;
    /// Bytes sent to one peer and not yet taken by it, besides the frame being written.
    std::size_t outgoingBytes = std::size_t{64} << 20;
    /// Bytes received from one peer and not yet handled; above this, no more is read from it.
    std::size_t undeliveredBytes = std::size_t{16} << 20;
    /// Clients connected to one server at the same time.
    std::size_t peers = 256;
};

} // namespace local_socket
