#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "local_socket/Limits.h"

/// What goes over the line: frames, each a header of 16 bytes, a name and a payload. Numbers are little-endian.
///
///     0  4  "CCev"
///     4  2  version of the protocol
///     6  2  kind
///     8  4  bytes of the name
///    12  4  bytes of the payload
///
/// The first eight bytes are the same in every version. Each end begins with a greeting, which has neither name nor
/// payload: the front end first, the engine in answer. Every frame after that is an event. Name and payload are text as
/// `AppendEncoded` writes it.
namespace local_socket {

inline constexpr std::size_t headerBytes = 16;
inline constexpr std::uint16_t protocolVersion = 1;

enum class FrameKind : std::uint16_t { Greeting = 1, Event = 2 };

struct Frame {
    FrameKind kind = FrameKind::Greeting;
    /// Still encoded, within the size limits.
    std::string name;
    std::string payload;

    bool operator==(const Frame&) const = default;
};

std::string EncodeGreeting();

/// Nothing when the encoded name is empty or longer than `maximumNameBytes`, or the payload exceeds its limit.
[[nodiscard]] std::optional<std::string> EncodeEvent(std::wstring_view name, std::wstring_view payload,
                                                     std::size_t payloadLimit = maximumPayloadBytes);

/// Why bytes are not frames of ours.
enum class FrameRefusal : std::int32_t { None, NotAFrame, OtherVersion, UnknownKind, NameSize, PayloadSize };

/// Finds the frames in a stream of bytes that comes in pieces of any size.
class FrameDecoder {
public:
    /// Takes the next bytes and appends the frames that they complete. After a refusal, which may come behind good
    /// frames, the stream is lost: every later call gives the same refusal.
    FrameRefusal Take(std::string_view bytes, std::vector<Frame>& frames);

    /// True when a part of a frame is there and the rest is not.
    bool IsWithinFrame() const { return !header.empty(); }
    /// The version in the last header that came; 0 before the first.
    std::uint16_t PeerVersion() const { return version; }

private:
    void TakeHeader(std::string_view& bytes);
    void TakeBody(std::string_view& bytes);
    FrameRefusal CheckHeader() const;

    std::string header;
    Frame frame;
    std::size_t nameBytes = 0;
    std::size_t payloadBytes = 0;
    std::uint16_t version = 0;
    FrameRefusal refusal = FrameRefusal::None;
};

} // namespace local_socket
