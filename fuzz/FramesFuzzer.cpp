#include <algorithm>
#include <string>
#include <vector>

#include "fuzz/support/ByteSource.h"
#include "fuzz/support/Require.h"
#include "text/CodeUnits.h"
#include "text/Wtf8.h"
#include "transport/local_socket/Frame.h"

namespace {

using local_socket::Frame;
using local_socket::FrameDecoder;
using local_socket::FrameRefusal;

/// Everything decoded from a stream.
struct Outcome {
    std::vector<Frame> frames;
    FrameRefusal refusal = FrameRefusal::None;
    bool isWithinFrame = false;

    bool operator==(const Outcome&) const = default;
};

Outcome DecodeAtOnce(std::string_view bytes) {
    FrameDecoder decoder;
    Outcome outcome;
    outcome.refusal = decoder.Take(bytes, outcome.frames);
    outcome.isWithinFrame = decoder.IsWithinFrame();
    return outcome;
}

/// `lengths` are the sizes of the pieces, used cyclically; 0 is an empty piece.
Outcome DecodeInPieces(std::string_view bytes, const std::vector<std::size_t>& lengths) {
    FrameDecoder decoder;
    Outcome outcome;
    for (std::size_t piece = 0; !bytes.empty(); ++piece) {
        const std::size_t length = lengths[piece % lengths.size()];
        outcome.refusal = decoder.Take(bytes.substr(0, length), outcome.frames);
        bytes.remove_prefix(std::min(length, bytes.size()));
    }
    outcome.isWithinFrame = decoder.IsWithinFrame();
    return outcome;
}

/// Decoding, encoding and decoding again gives the same text.
void CheckText(std::string_view encoded) {
    const auto text = text::FromWtf8(encoded);
    if (text) {
        std::string again;
        text::AppendWtf8(again, *text);
        fuzz::Require(text::FromWtf8(again) == text, "a text arrives as it was sent");
        fuzz::Require(again.size() <= encoded.size(), "an encoding does not grow");
    }
}

void CheckFrame(const Frame& frame) {
    const bool isEvent = frame.kind == local_socket::FrameKind::Event;
    fuzz::Require(isEvent != frame.name.empty(), "an event, and nothing else, has a name");
    fuzz::Require(isEvent || frame.payload.empty(), "only an event has a payload");
    fuzz::Require(frame.name.size() <= local_socket::maximumNameBytes, "a name is short");
    CheckText(frame.name);
    CheckText(frame.payload);
}

void CheckStream(std::string_view bytes, const std::vector<std::size_t>& lengths) {
    const Outcome outcome = DecodeAtOnce(bytes);
    fuzz::Require(DecodeInPieces(bytes, {1}) == outcome, "byte by byte the same frames come");
    fuzz::Require(DecodeInPieces(bytes, lengths) == outcome, "in pieces the same frames come");
    std::for_each(outcome.frames.begin(), outcome.frames.end(), CheckFrame);
}

/// False for texts with elements beyond Unicode, which cannot be transmitted.
bool Travels(const std::wstring& text) {
    return std::all_of(text.begin(), text.end(),
                       [](wchar_t element) { return text::Unit(element) <= text::lastCodePoint; });
}

void CheckSent(fuzz::ByteSource& source, std::string& stream, std::vector<Frame>& sent) {
    const std::wstring name = source.Text();
    const std::wstring payload = source.Text();
    const auto bytes = local_socket::EncodeEvent(name, payload);
    fuzz::Require(bytes.has_value() != name.empty(), "an event with a name can be sent");
    if (!bytes) {
        return;
    }
    const Outcome outcome = DecodeAtOnce(*bytes);
    fuzz::Require(outcome.frames.size() == 1 && !outcome.isWithinFrame, "one event is one frame");
    const Frame& frame = outcome.frames[0];
    fuzz::Require(!Travels(name) || text::FromWtf8(frame.name) == name, "a name arrives as it was sent");
    fuzz::Require(!Travels(payload) || text::FromWtf8(frame.payload) == payload, "a payload arrives as it was sent");
    stream += *bytes;
    sent.push_back(frame);
}

} // namespace

/// Decodes the input as the stream of a peer: at once, byte by byte and in pieces. Then sends events made from it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes = fuzz::BytesOf(data, size);
    // The lengths are read from the end of the input, so that the input begins with the stream itself.
    std::vector<std::size_t> lengths = {1 + size % 7};
    for (const char byte : bytes.substr(size - std::min<std::size_t>(size, 8))) {
        lengths.push_back(static_cast<std::uint8_t>(byte));
    }
    CheckStream(bytes, lengths);
    CheckText(bytes);
    fuzz::ByteSource source(bytes);
    std::string stream = local_socket::EncodeHandshake();
    std::vector<Frame> sent = {Frame()};
    for (std::size_t count = source.Count(4); count > 0; --count) {
        CheckSent(source, stream, sent);
    }
    fuzz::Require(DecodeInPieces(stream, lengths) == Outcome{sent, FrameRefusal::None, false},
                  "every event arrives, in order");
    return 0;
}
