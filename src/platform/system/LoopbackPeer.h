#pragma once

#include <cstdint>

namespace platform {

/// To whom the other end of a connection belongs.
enum class PeerUser { Own, Other, Unknown };

/// To whom the program belongs that has connected from port `peerPort` of 127.0.0.1 to port `ownPort` there. `Unknown`
/// if the connection has ended already, or the system does not tell. Threads: any.
PeerUser UserOfLoopbackPeer(std::uint16_t ownPort, std::uint16_t peerPort);

} // namespace platform
