#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "transport/local_socket/Limits.h"

/// The wire format: frames, each a header of 24 bytes, a name and a payload. Numbers are little-endian.
///
///     0  4  "CCev"
///     4  2  version of the protocol
///     6  2  kind
///     8  4  bytes of the name
///    12  4  bytes of the payload
///    16  8  number of the event
///
/// The first eight bytes are the same in every version. Each peer starts with a handshake frame, which has no name,
/// payload or number: the client first, the server in answer. A server that has no room for another client sends a busy
/// frame instead, with the number of clients it serves (0: as many as the system allows), and ends the session. Every
/// frame after the handshake is an event or, from the server, the acknowledgement of one, which has neither name nor
/// payload. An event with a number other than 0 is acknowledged once, by a frame with this number, after the answers to
/// it. Name and payload are text as `AppendEncoded` writes it.
namespace local_socket {

inline constexpr std::size_t headerBytes = 24;
inline constexpr std::uint16_t protocolVersion = 2;

enum class FrameKind : std::uint16_t { Handshake = 1, Event = 2, Acknowledgement = 3, Busy = 4 };

/// Identifies an event within its session; 0: no acknowledgement is wanted.
using EventNumber = std::uint64_t;

struct Frame {
    FrameKind kind = FrameKind::Handshake;
    /// Still encoded, within the size limits.
    std::string name;
    std::string payload;
    /// Number of the event or acknowledgement; with `Busy`, the number of clients served.
    EventNumber number = 0;

    bool operator==(const Frame&) const = default;
};

std::string EncodeHandshake();
std::string EncodeAcknowledgement(EventNumber number);
std::string EncodeBusy(std::uint64_t served);

/// Returns nothing if the encoded name is empty or longer than `maximumNameBytes`, or if the payload exceeds its limit.
[[nodiscard]] std::optional<std::string> EncodeEvent(std::wstring_view name, std::wstring_view payload,
                                                     EventNumber number = 0,
                                                     std::size_t payloadLimit = maximumPayloadBytes);

/// Why bytes are rejected.
enum class FrameRefusal : std::int32_t { None, NotAFrame, OtherVersion, UnknownKind, NameSize, PayloadSize };

/// Extracts the frames from a byte stream that arrives in pieces of any size.
class FrameDecoder {
public:
    /// Takes the next bytes and appends the frames that they complete. A refusal may follow valid frames; after it the
    /// stream is unusable, and every later call returns the same refusal.
    FrameRefusal Take(std::string_view bytes, std::vector<Frame>& frames);

    /// True if the last frame is incomplete.
    bool IsWithinFrame() const { return !header.empty(); }
    /// The version in the last received header; 0 before the first.
    std::uint16_t PeerVersion() const { return version; }

private:
    void TakeHeader(std::string_view& bytes);
    void TakeVersion();
    void TakeRestOfHeader();
    void TakeBody(std::string_view& bytes);
    FrameRefusal CheckVersion() const;
    FrameRefusal CheckSizes() const;

    std::string header;
    Frame frame;
    std::size_t nameBytes = 0;
    std::size_t payloadBytes = 0;
    std::uint16_t version = 0;
    FrameRefusal refusal = FrameRefusal::None;
};

} // namespace local_socket
