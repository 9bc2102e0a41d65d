#pragma once

#include <cstdint>

namespace platform {

/// To whom the other end of a connection belongs.
enum class PeerUser {
    /// The user of this process, or on Linux root, from whom nothing can be kept.
    Own,
    /// Any other user, or nobody any more.
    Other,
    /// The system does not list the connection or does not tell its user.
    Unknown
};

/// To whom the program belongs that has connected from port `peerPort` of 127.0.0.1 to port `ownPort` there. Threads:
/// any.
PeerUser UserOfLoopbackPeer(std::uint16_t ownPort, std::uint16_t peerPort);

} // namespace platform
