#include "transport/local_socket/Frame.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

namespace {

using local_socket::EncodeAcknowledgement;
using local_socket::EncodeBusy;
using local_socket::EncodeEvent;
using local_socket::EncodeHandshake;
using local_socket::Frame;
using local_socket::FrameDecoder;
using local_socket::FrameKind;
using local_socket::FrameRefusal;

using namespace std::string_literals;

std::vector<Frame> DecodeInPieces(const std::vector<std::string_view>& pieces) {
    FrameDecoder decoder;
    std::vector<Frame> frames;
    for (const std::string_view piece : pieces) {
        EXPECT_EQ(decoder.Take(piece, frames), FrameRefusal::None);
    }
    EXPECT_FALSE(decoder.IsWithinFrame());
    return frames;
}

TEST(FrameTest, AGreetingIsABareHeader) {
    EXPECT_EQ(EncodeHandshake(), "CCev\2\0\1\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0"s);
}

TEST(FrameTest, AnEventIsHeaderNameAndPayload) {
    EXPECT_EQ(EncodeEvent(L"Go", L"{}\u00e4", 0x0807060504030201),
              "CCev\2\0\2\0\2\0\0\0\4\0\0\0\1\2\3\4\5\6\7\10Go{}\xC3\xA4"s);
}

TEST(FrameTest, AnEmptyPayloadIsSent) {
    EXPECT_EQ(EncodeEvent(L"A", L""), "CCev\2\0\2\0\1\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0A"s);
}

TEST(FrameTest, AnAcknowledgementIsAHeaderWithTheNumberOfTheEvent) {
    EXPECT_EQ(EncodeAcknowledgement(258), "CCev\2\0\3\0\0\0\0\0\0\0\0\0\2\1\0\0\0\0\0\0"s);
    EXPECT_EQ(DecodeInPieces({EncodeAcknowledgement(258)}),
              (std::vector<Frame>{{FrameKind::Acknowledgement, "", "", 258}}));
}

TEST(FrameTest, ABusyEngineSendsAHeaderWithHowManyItServes) {
    EXPECT_EQ(EncodeBusy(256), "CCev\2\0\4\0\0\0\0\0\0\0\0\0\0\1\0\0\0\0\0\0"s);
    EXPECT_EQ(DecodeInPieces({EncodeBusy(256)}), (std::vector<Frame>{{FrameKind::Busy, "", "", 256}}));
}

TEST(FrameTest, WhatIsTooBigIsNotEncoded) {
    EXPECT_EQ(EncodeEvent(L"", L"{}"), std::nullopt);
    EXPECT_TRUE(EncodeEvent(std::wstring(256, L'n'), L"{}"));
    EXPECT_EQ(EncodeEvent(std::wstring(257, L'n'), L"{}"), std::nullopt);
    EXPECT_EQ(EncodeEvent(std::wstring(129, L'\u00e4'), L"{}"), std::nullopt);
    EXPECT_TRUE(EncodeEvent(L"A", L"12345678", 0, 8));
    EXPECT_EQ(EncodeEvent(L"A", L"123456789", 0, 8), std::nullopt);
}

TEST(FrameTest, AStreamIsReadWhereverItIsSplitOnce) {
    const std::string stream = EncodeHandshake() + *EncodeEvent(L"Name", L"payload", 7) + *EncodeEvent(L"B", L"");
    const std::vector<Frame> expected{
        {FrameKind::Handshake, "", "", 0}, {FrameKind::Event, "Name", "payload", 7}, {FrameKind::Event, "B", "", 0}};
    for (std::size_t split = 0; split <= stream.size(); ++split) {
        const std::string_view whole(stream);
        EXPECT_EQ(DecodeInPieces({whole.substr(0, split), whole.substr(split)}), expected) << "split at " << split;
    }
}

TEST(FrameTest, AStreamIsReadWhereverItIsSplitTwice) {
    const std::string stream = *EncodeEvent(L"Name", L"payload", 7) + EncodeHandshake();
    const std::vector<Frame> expected{{FrameKind::Event, "Name", "payload", 7}, {FrameKind::Handshake, "", "", 0}};
    const std::string_view whole(stream);
    for (std::size_t first = 0; first <= stream.size(); ++first) {
        for (std::size_t second = first; second <= stream.size(); ++second) {
            EXPECT_EQ(
                DecodeInPieces({whole.substr(0, first), whole.substr(first, second - first), whole.substr(second)}),
                expected)
                << "split at " << first << " and " << second;
        }
    }
}

TEST(FrameTest, AStreamIsReadByteByByte) {
    const std::string stream = EncodeHandshake() + *EncodeEvent(L"Name", L"payload", 7);
    std::vector<std::string_view> pieces;
    for (std::size_t index = 0; index < stream.size(); ++index) {
        pieces.push_back(std::string_view(stream).substr(index, 1));
    }
    EXPECT_EQ(DecodeInPieces(pieces).size(), 2u);
}

TEST(FrameTest, APartOfAFrameIsKnownAsSuch) {
    const std::string frame = *EncodeEvent(L"Name", L"payload", 7);
    for (std::size_t size = 1; size < frame.size(); ++size) {
        FrameDecoder decoder;
        std::vector<Frame> frames;
        EXPECT_EQ(decoder.Take(std::string_view(frame).substr(0, size), frames), FrameRefusal::None);
        EXPECT_TRUE(decoder.IsWithinFrame()) << size;
        EXPECT_TRUE(frames.empty()) << size;
    }
}

struct RefusedCase {
    const char* what;
    std::string bytes;
    FrameRefusal refusal;
};

const std::vector<RefusedCase> refusedCases{
    {"zeros", std::string(24, '\0'), FrameRefusal::NotAFrame},
    {"text", "GET / HTTP/1.1\r\n\r\n", FrameRefusal::NotAFrame},
    {"magic in small letters", "ccev\2\0\1\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0"s, FrameRefusal::NotAFrame},
    {"version 0", "CCev\0\0\1\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0"s, FrameRefusal::OtherVersion},
    {"version 1", "CCev\1\0\1\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0"s, FrameRefusal::OtherVersion},
    {"version 256", "CCev\0\1\1\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0"s, FrameRefusal::OtherVersion},
    {"version 3 of unknown kind", "CCev\3\0\7\0\1\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0"s, FrameRefusal::OtherVersion},
    {"kind 0", "CCev\2\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0"s, FrameRefusal::UnknownKind},
    {"kind 5", "CCev\2\0\5\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0"s, FrameRefusal::UnknownKind},
    {"greeting with a name", "CCev\2\0\1\0\1\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0n"s, FrameRefusal::NameSize},
    {"greeting with a payload", "CCev\2\0\1\0\0\0\0\0\1\0\0\0\0\0\0\0\0\0\0\0p"s, FrameRefusal::PayloadSize},
    {"event without a name", "CCev\2\0\2\0\0\0\0\0\1\0\0\0\0\0\0\0\0\0\0\0p"s, FrameRefusal::NameSize},
    {"name of 257 bytes", "CCev\2\0\2\0\1\1\0\0\0\0\0\0\0\0\0\0\0\0\0\0"s, FrameRefusal::NameSize},
    {"name of 4 GB", "CCev\2\0\2\0\xFF\xFF\xFF\xFF\0\0\0\0\0\0\0\0\0\0\0\0"s, FrameRefusal::NameSize},
    {"payload of 256 MB and one", "CCev\2\0\2\0\1\0\0\0\1\0\0\x10\0\0\0\0\0\0\0\0"s, FrameRefusal::PayloadSize},
    {"payload of 4 GB", "CCev\2\0\2\0\1\0\0\0\xFF\xFF\xFF\xFF\0\0\0\0\0\0\0\0"s, FrameRefusal::PayloadSize},
    {"acknowledgement with a name", "CCev\2\0\3\0\1\0\0\0\0\0\0\0\1\0\0\0\0\0\0\0n"s, FrameRefusal::NameSize},
    {"acknowledgement with a payload", "CCev\2\0\3\0\0\0\0\0\1\0\0\0\1\0\0\0\0\0\0\0p"s, FrameRefusal::PayloadSize},
};

/// Its header is shorter, so the reader must not wait for more.
TEST(FrameTest, TheGreetingOfVersion1IsRefusedAsSuch) {
    FrameDecoder decoder;
    std::vector<Frame> frames;
    EXPECT_EQ(decoder.Take("CCev\1\0\1\0\0\0\0\0\0\0\0\0"s, frames), FrameRefusal::OtherVersion);
    EXPECT_EQ(decoder.PeerVersion(), 1);
}

TEST(FrameTest, WhatIsNoFrameIsRefused) {
    for (const RefusedCase& refused : refusedCases) {
        FrameDecoder decoder;
        std::vector<Frame> frames;
        EXPECT_EQ(decoder.Take(refused.bytes, frames), refused.refusal) << refused.what;
        EXPECT_TRUE(frames.empty()) << refused.what;
    }
}

TEST(FrameTest, WhatIsNoFrameIsRefusedWhereverItIsSplit) {
    for (const RefusedCase& refused : refusedCases) {
        for (std::size_t split = 0; split <= refused.bytes.size(); ++split) {
            FrameDecoder decoder;
            std::vector<Frame> frames;
            decoder.Take(std::string_view(refused.bytes).substr(0, split), frames);
            EXPECT_EQ(decoder.Take(std::string_view(refused.bytes).substr(split), frames), refused.refusal)
                << refused.what << " split at " << split;
            EXPECT_TRUE(frames.empty()) << refused.what;
        }
    }
}

TEST(FrameTest, AHeaderOfTheLargestSizesIsTaken) {
    FrameDecoder decoder;
    std::vector<Frame> frames;
    EXPECT_EQ(decoder.Take("CCev\2\0\2\0\0\1\0\0\0\0\0\x10\0\0\0\0\0\0\0\0"s, frames), FrameRefusal::None);
    EXPECT_TRUE(decoder.IsWithinFrame());
}

TEST(FrameTest, FramesBeforeTheRefusalAreGoodAndNothingAfterItIs) {
    FrameDecoder decoder;
    std::vector<Frame> frames;
    EXPECT_EQ(decoder.Take(*EncodeEvent(L"A", L"1") + std::string(16, 'x'), frames), FrameRefusal::NotAFrame);
    EXPECT_EQ(frames, (std::vector<Frame>{{FrameKind::Event, "A", "1", 0}}));
    EXPECT_EQ(decoder.Take(*EncodeEvent(L"B", L"2"), frames), FrameRefusal::NotAFrame);
    EXPECT_EQ(frames.size(), 1u);
}

TEST(FrameTest, TheVersionOfThePeerIsKnown) {
    FrameDecoder decoder;
    std::vector<Frame> frames;
    EXPECT_EQ(decoder.PeerVersion(), 0);
    decoder.Take("CCev\x34\x12\1\0\0\0\0\0\0\0\0\0"s, frames);
    EXPECT_EQ(decoder.PeerVersion(), 0x1234);
}

} // namespace
