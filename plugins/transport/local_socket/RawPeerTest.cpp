#include <array>
#include <chrono>
#include <cstddef>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "kit/Collected.h"
#include "kit/doubles/RecordingHandler.h"
#include "kit/local_socket/EndpointNames.h"
#include "kit/local_socket/RecordingLog.h"
#include "transport/local_socket/Client.h"
#include "transport/local_socket/Frame.h"
#include "transport/local_socket/Server.h"

namespace {

using local_socket::Client;
using local_socket::EncodeEvent;
using local_socket::EncodeHandshake;
using local_socket::Limits;
using local_socket::MakeLocalNetwork;
using local_socket::Server;

using namespace std::string_literals;

using Lines = std::vector<std::wstring>;

/// A peer on the bare connection: sends arbitrary bytes and reads the reply.
class RawPeer {
public:
    explicit RawPeer(const std::string& place) : thread([this] { network->Run(); }) {
        Use(network->Connect(place).channel);
    }

    /// Listens in place of an engine and sends these bytes to the first front end.
    RawPeer(const std::string& place, const std::string& answer) : thread([this] { network->Run(); }) {
        network->Listen(place, [this, answer](std::unique_ptr<local_socket::Channel> accepted, local_socket::Room) {
            channel = std::move(accepted);
            ContinueRead();
            if (!answer.empty()) {
                WriteWhole(answer);
            }
        });
    }

    ~RawPeer() {
        network->Stop();
        thread.join();
    }

    void Send(const std::string& bytes) {
        const std::lock_guard<std::mutex> guard(network->Lock());
        WriteWhole(bytes);
    }

    void Close() {
        const std::lock_guard<std::mutex> guard(network->Lock());
        channel->Close();
    }

    /// Waits for this many bytes.
    std::string Receive(std::size_t size) {
        const std::vector<char> bytes = arrived.WaitFor(size);
        return {bytes.begin(), bytes.end()};
    }

    /// Waits until the peer has closed, and returns all bytes received before.
    std::string ReceiveUntilClosed() {
        ended.WaitFor(1);
        return Receive(0);
    }

private:
    void Use(std::unique_ptr<local_socket::Channel> connected) {
        ASSERT_TRUE(connected);
        const std::lock_guard<std::mutex> guard(network->Lock());
        channel = std::move(connected);
        ContinueRead();
    }

    void WriteWhole(const std::string& bytes) {
        sending = bytes;
        channel->Write(sending.data(), sending.size(), [](bool, std::size_t) {});
    }

    void ContinueRead() {
        channel->Read(buffer.data(), buffer.size(), [this](bool succeeded, std::size_t bytes) {
            for (std::size_t index = 0; index < bytes; ++index) {
                arrived.Add(buffer[index]);
            }
            if (succeeded) {
                ContinueRead();
            } else {
                ended.Add(true);
            }
        });
    }

    Collected<char> arrived;
    std::string sending;
    std::array<char, 4096> buffer{};
    Collected<bool> ended;
    const std::unique_ptr<local_socket::Network> network = MakeLocalNetwork([](const std::wstring&) {});
    std::unique_ptr<local_socket::Channel> channel;
    std::thread thread;
};

class RawPeerTest : public testing::Test {
protected:
    std::unique_ptr<Server> Engine() {
        return Server::Listen(place, MakeLocalNetwork(log.Function()), limits, log.Function());
    }

    std::unique_ptr<Client> MakeClient() {
        return std::make_unique<Client>(place, MakeLocalNetwork(log.Function()), limits, log.Function());
    }

    /// Waits for the only line of the log, and compares its reason.
    void ExpectLogged(const std::wstring& reason) {
        const Lines lines = log.lines.WaitFor(1);
        ASSERT_EQ(lines.size(), 1u) << testing::PrintToString(lines);
        EXPECT_NE(lines[0].find(reason), std::wstring::npos) << testing::PrintToString(lines[0]);
    }

    const std::string place = NewEndpointName();
    Limits limits;
    RecordingLog log;
};

TEST_F(RawPeerTest, TheLineIsSpokenAsDescribed) {
    const auto engine = Engine();
    RecordingHandler request(
        [&](const std::wstring&) { EXPECT_TRUE(engine->SendEventTo(engine->CurrentPeer(), L"Yes", L"{}")); });
    engine->AddEventHandler(L"Go", &request);
    RawPeer peer(place);
    peer.Send("CCev\2\0\1\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0"
              "CCev\2\0\2\0\2\0\0\0\1\0\0\0\5\0\0\0\0\0\0\0Go1"s);
    EXPECT_EQ(request.payloads.WaitFor(1), Lines{L"1"});
    const std::string answer = "CCev\2\0\1\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0"
                               "CCev\2\0\2\0\3\0\0\0\2\0\0\0\0\0\0\0\0\0\0\0Yes{}"
                               "CCev\2\0\3\0\0\0\0\0\0\0\0\0\5\0\0\0\0\0\0\0"s;
    EXPECT_EQ(peer.Receive(answer.size()), answer);
    engine->AddEventHandler(L"Go", nullptr);
}

TEST_F(RawPeerTest, APeerThatSendsGarbageIsClosed) {
    const auto engine = Engine();
    RawPeer peer(place);
    peer.Send("GET / HTTP/1.1\r\n\r\n");
    EXPECT_EQ(peer.ReceiveUntilClosed(), "");
    ExpectLogged(L"was dropped: it sent something that is no event.");
}

TEST_F(RawPeerTest, APeerOfAnotherVersionIsToldOursAndClosed) {
    const auto engine = Engine();
    RawPeer peer(place);
    peer.Send("CCev\7\0\1\0\0\0\0\0\0\0\0\0"s);
    EXPECT_EQ(peer.ReceiveUntilClosed(), EncodeHandshake());
    ExpectLogged(L"was dropped: it speaks version 7 of the protocol, this program version 2");
}

TEST_F(RawPeerTest, APeerThatSendsNothingIsClosed) {
    limits.handshake = std::chrono::milliseconds(20);
    const auto engine = Engine();
    RawPeer peer(place);
    EXPECT_EQ(peer.ReceiveUntilClosed(), "");
    ExpectLogged(L"was dropped: it does not answer: no greeting within 20 ms.");
}

TEST_F(RawPeerTest, APeerThatStopsInTheMiddleOfAnEventIsClosed) {
    limits.stall = std::chrono::milliseconds(20);
    const auto engine = Engine();
    RawPeer peer(place);
    peer.Send(EncodeHandshake() + EncodeEvent(L"A", L"payload")->substr(0, 20));
    EXPECT_EQ(peer.ReceiveUntilClosed(), EncodeHandshake());
    ExpectLogged(L"was dropped: it stopped in the middle of an event for 20 ms.");
}

TEST_F(RawPeerTest, APeerThatGoesInTheMiddleOfAnEventIsLogged) {
    const auto engine = Engine();
    RawPeer peer(place);
    peer.Send(EncodeHandshake() + EncodeEvent(L"A", L"payload")->substr(0, 20));
    peer.Close();
    ExpectLogged(L"was dropped: it went in the middle of an event.");
}

TEST_F(RawPeerTest, APeerThatSendsAnEventOverTheLimitIsClosedBeforeItIsRead) {
    const auto engine = Engine();
    RawPeer peer(place);
    peer.Send(EncodeHandshake() + "CCev\2\0\2\0\1\0\0\0\1\0\0\x10\0\0\0\0\0\0\0\0"s);
    peer.ReceiveUntilClosed();
    ExpectLogged(L"was dropped: it sent an event over 268435456 bytes.");
}

TEST_F(RawPeerTest, APeerThatSendsBytesThatAreNoTextIsClosed) {
    const auto engine = Engine();
    RecordingHandler request;
    engine->AddEventHandler(L"A", &request);
    RawPeer peer(place);
    peer.Send(EncodeHandshake() + "CCev\2\0\2\0\1\0\0\0\1\0\0\0\0\0\0\0\0\0\0\0A\xFF"s);
    peer.ReceiveUntilClosed();
    ExpectLogged(L"was dropped: it sent bytes that are no text.");
    engine->AddEventHandler(L"A", nullptr);
}

TEST_F(RawPeerTest, BadPeersDisturbNobody) {
    const auto engine = Engine();
    RecordingHandler request(
        [&](const std::wstring&) { EXPECT_TRUE(engine->SendEventTo(engine->CurrentPeer(), L"Yes", L"")); });
    engine->AddEventHandler(L"Go", &request);
    const RawPeer silent(place);
    RawPeer half(place);
    half.Send(EncodeHandshake() + EncodeEvent(L"A", L"payload")->substr(0, 20));
    const auto client = MakeClient();
    RecordingHandler answer;
    client->AddEventHandler(L"Yes", &answer);
    EXPECT_TRUE(client->SendEvent(L"Go", L""));
    EXPECT_EQ(answer.payloads.WaitFor(1).size(), 1u);
    client->AddEventHandler(L"Yes", nullptr);
    engine->AddEventHandler(L"Go", nullptr);
}

TEST_F(RawPeerTest, AnEngineThatDoesNotGreetIsNoEngine) {
    limits.handshake = std::chrono::milliseconds(20);
    const RawPeer engine(place, "");
    const auto client = MakeClient();
    EXPECT_FALSE(client->IsConnected());
    ExpectLogged(L"The connection to the engine was closed: it does not answer: no greeting within 20 ms.");
}

TEST_F(RawPeerTest, AnEngineThatDoesNotGreetIsWaitedForOnceByTheOneWhoMadeTheEndAndConnects) {
    limits.handshake = std::chrono::milliseconds(20);
    const RawPeer engine(place, "");
    const auto client = MakeClient();
    std::wstring problem;
    EXPECT_FALSE(client->Connect(problem));
    EXPECT_EQ(problem, L"it does not answer: no greeting within 20 ms");
    EXPECT_FALSE(client->IsBusy());
    EXPECT_EQ(log.lines.All().size(), 1u);
    EXPECT_FALSE(client->Connect(problem));
    EXPECT_EQ(log.lines.All().size(), 2u);
}

TEST_F(RawPeerTest, AnEngineOfAnotherVersionIsNoEngine) {
    const RawPeer engine(place, "CCev\1\0\1\0\0\0\0\0\0\0\0\0"s);
    const auto client = MakeClient();
    EXPECT_FALSE(client->IsConnected());
    ExpectLogged(
        L"The connection to the engine was closed: it speaks version 1 of the protocol, this program version 2");
}

} // namespace
