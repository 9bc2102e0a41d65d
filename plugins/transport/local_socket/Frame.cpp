#include "transport/local_socket/Frame.h"

#include <algorithm>
#include <utility>

#include "text/Wtf8.h"

namespace local_socket {
namespace {

constexpr std::string_view magic = "CCev";
/// Number of header bytes that are the same in every version.
constexpr std::size_t commonBytes = 8;
constexpr std::size_t versionAt = 4;
constexpr std::size_t kindAt = 6;
constexpr std::size_t nameSizeAt = 8;
constexpr std::size_t payloadSizeAt = 12;
constexpr std::size_t eventNumberAt = 16;

void PutNumber(std::string& bytes, std::size_t position, std::size_t width, std::uint64_t number) {
    for (std::size_t index = 0; index < width; ++index) {
        bytes[position + index] = static_cast<char>((number >> (8 * index)) & 0xFF);
    }
}

std::uint64_t NumberAt(std::string_view bytes, std::size_t position, std::size_t width) {
    std::uint64_t number = 0;
    for (std::size_t index = 0; index < width; ++index) {
        number |= std::uint64_t{static_cast<std::uint8_t>(bytes[position + index])} << (8 * index);
    }
    return number;
}

std::string Header(FrameKind kind, EventNumber number) {
    std::string bytes(magic);
    bytes.resize(headerBytes, '\0');
    PutNumber(bytes, versionAt, 2, protocolVersion);
    PutNumber(bytes, kindAt, 2, static_cast<std::uint64_t>(kind));
    PutNumber(bytes, eventNumberAt, 8, number);
    return bytes;
}

/// Moves bytes from the start of `bytes` to the end of `target` until `target` has `size` bytes.
void Fill(std::string& target, std::size_t size, std::string_view& bytes) {
    const std::size_t count = std::min(size - target.size(), bytes.size());
    target.append(bytes.substr(0, count));
    bytes.remove_prefix(count);
}

bool IsNameSize(FrameKind kind, std::size_t size) {
    return kind == FrameKind::Event ? size > 0 && size <= maximumNameBytes : size == 0;
}

bool IsKnown(FrameKind kind) {
    return kind >= FrameKind::Handshake && kind <= FrameKind::Busy;
}

bool IsPayloadSize(FrameKind kind, std::size_t size) {
    return kind == FrameKind::Event ? size <= maximumPayloadBytes : size == 0;
}

} // namespace

std::string EncodeHandshake() {
    return Header(FrameKind::Handshake, 0);
}

std::string EncodeAcknowledgement(EventNumber number) {
    return Header(FrameKind::Acknowledgement, number);
}

std::string EncodeBusy(std::uint64_t served) {
    return Header(FrameKind::Busy, served);
}

std::optional<std::string> EncodeEvent(std::wstring_view name, std::wstring_view payload, EventNumber number,
                                       std::size_t payloadLimit) {
    std::string bytes = Header(FrameKind::Event, number);
    text::AppendWtf8(bytes, name);
    const std::size_t nameBytes = bytes.size() - headerBytes;
    if (!IsNameSize(FrameKind::Event, nameBytes)) {
        return std::nullopt;
    }
    text::AppendWtf8(bytes, payload);
    const std::size_t payloadBytes = bytes.size() - headerBytes - nameBytes;
    if (payloadBytes > payloadLimit) {
        return std::nullopt;
    }
    PutNumber(bytes, nameSizeAt, 4, nameBytes);
    PutNumber(bytes, payloadSizeAt, 4, payloadBytes);
    return bytes;
}

FrameRefusal FrameDecoder::Take(std::string_view bytes, std::vector<Frame>& frames) {
    while (refusal == FrameRefusal::None && !bytes.empty()) {
        if (header.size() < headerBytes) {
            TakeHeader(bytes);
        } else {
            TakeBody(bytes);
        }
        const bool isComplete =
            header.size() == headerBytes && frame.name.size() == nameBytes && frame.payload.size() == payloadBytes;
        if (refusal == FrameRefusal::None && isComplete) {
            frames.push_back(std::exchange(frame, Frame{}));
            header.clear();
        }
    }
    return refusal;
}

/// The version is checked as soon as it has arrived: the length of the header depends on it.
void FrameDecoder::TakeHeader(std::string_view& bytes) {
    if (header.size() < commonBytes) {
        Fill(header, commonBytes, bytes);
        if (header.size() == commonBytes) {
            TakeVersion();
        }
        return;
    }
    Fill(header, headerBytes, bytes);
    if (header.size() == headerBytes) {
        TakeRestOfHeader();
    }
}

void FrameDecoder::TakeVersion() {
    version = static_cast<std::uint16_t>(NumberAt(header, versionAt, 2));
    frame.kind = static_cast<FrameKind>(NumberAt(header, kindAt, 2));
    refusal = CheckVersion();
}

void FrameDecoder::TakeRestOfHeader() {
    nameBytes = NumberAt(header, nameSizeAt, 4);
    payloadBytes = NumberAt(header, payloadSizeAt, 4);
    frame.number = NumberAt(header, eventNumberAt, 8);
    refusal = CheckSizes();
}

void FrameDecoder::TakeBody(std::string_view& bytes) {
    Fill(frame.name, nameBytes, bytes);
    Fill(frame.payload, payloadBytes, bytes);
}

FrameRefusal FrameDecoder::CheckVersion() const {
    if (std::string_view(header).substr(0, magic.size()) != magic) {
        return FrameRefusal::NotAFrame;
    }
    if (version != protocolVersion) {
        return FrameRefusal::OtherVersion;
    }
    return IsKnown(frame.kind) ? FrameRefusal::None : FrameRefusal::UnknownKind;
}

FrameRefusal FrameDecoder::CheckSizes() const {
    if (!IsNameSize(frame.kind, nameBytes)) {
        return FrameRefusal::NameSize;
    }
    return IsPayloadSize(frame.kind, payloadBytes) ? FrameRefusal::None : FrameRefusal::PayloadSize;
}

} // namespace local_socket
