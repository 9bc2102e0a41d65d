#include "kit/Deadline.h"
#include "kit/local_socket/EndpointNames.h"
#include "system/stress/NumberedEvents.h"
#include "system/stress/OperationCounts.h"
#include "system/stress/Rounds.h"
#include "system/stress/ThreadTeam.h"
#include "transport/local_socket/Client.h"
#include "transport/local_socket/Server.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace {

using local_socket::Client;
using local_socket::Limits;
using local_socket::MakeLocalNetwork;
using local_socket::Server;

constexpr std::uint32_t frontEndCount = 4;
constexpr std::uint32_t connectionsEach = 4;
constexpr std::uint32_t eventsEach = 60;

/// Long timeouts, so that no peer is dropped for being slow.
Limits PatientLimits() {
    Limits limits;
    limits.handshake = std::chrono::minutes(4);
    limits.stall = std::chrono::minutes(4);
    limits.acknowledgement = std::chrono::minutes(4);
    limits.outgoingBytes = std::size_t{1} << 30;
    return limits;
}

/// Returns each payload to its sender.
class Echo final : public CallbackFunctor {
public:
    explicit Echo(StreamCheck& streamCheck) : check(streamCheck) {}

    /// Call before it is registered with an end.
    void AnswerOver(Server* ownEnd) { end = ownEnd; }

    bool operator()(const std::wstring& payload) override {
        check.Take(payload);
        return end->SendEventTo(end->CurrentPeer(), L"echo", payload);
    }

private:
    Server* end = nullptr;
    StreamCheck& check;
};

/// An engine and front ends over real sockets or pipes, for one round.
class SocketRound {
public:
    explicit SocketRound(OperationCounts& operationCounts) : counts(operationCounts) { StartEngine(); }
    ~SocketRound() { EndEngine(); }
    SocketRound(const SocketRound&) = delete;
    SocketRound& operator=(const SocketRound&) = delete;

    /// Front ends connect, send, disconnect and break off, while the engine broadcasts.
    void Run();
    /// Like `Run`, with restarts of the engine.
    void RunWithRestarts();
    void CheckEnd();

private:
    void StartEngine();
    void EndEngine();
    void RestartEngine();
    std::unique_ptr<Client> MakeClient();
    void Talk(std::uint32_t frontEnd, std::uint32_t connection);
    void BreakOff(std::uint32_t frontEnd, std::uint32_t connection);
    void TryToTalk(std::uint32_t frontEnd, std::uint32_t connection);
    void Send(Client& client, const std::wstring& stream);
    void Broadcast();
    void ChangeHandlers();
    void Note(const std::wstring& line);

    OperationCounts& counts;
    const std::string place = NewEndpointName();
    const Limits limits = PatientLimits();
    StreamCheck atEngine;
    Echo first{atEngine};
    Echo second{atEngine};
    StreamCheck triesAtEngine{StreamCheck::Streams::WithGaps};
    CheckingHandler tryHandler{triesAtEngine};
    std::unique_ptr<Server> engine;
    std::uint32_t told = 0;
    std::mutex linesMutex;
    std::vector<std::wstring> lines;
};

void SocketRound::StartEngine() {
    const auto log = [this](const std::wstring& line) { Note(line); };
    engine = Server::Listen(place, MakeLocalNetwork(log), limits, log);
    ASSERT_TRUE(engine);
    first.AnswerOver(engine.get());
    second.AnswerOver(engine.get());
    engine->AddEventHandler(L"number", &first);
    engine->AddEventHandler(L"try", &tryHandler);
}

void SocketRound::EndEngine() {
    engine->AddEventHandler(L"number", nullptr);
    engine->AddEventHandler(L"try", nullptr);
    engine.reset();
}

std::unique_ptr<Client> SocketRound::MakeClient() {
    const auto log = [this](const std::wstring& line) { Note(line); };
    return std::make_unique<Client>(place, MakeLocalNetwork(log), limits, log);
}

void SocketRound::Run() {
    ThreadTeam engineSide;
    engineSide.AddEndless([this] { told < atEngine.Count() ? Broadcast() : std::this_thread::yield(); });
    engineSide.AddEndless([this] { ChangeHandlers(); });
    ThreadTeam frontEnds;
    for (std::uint32_t frontEnd = 0; frontEnd < frontEndCount; ++frontEnd) {
        frontEnds.Add([this, frontEnd] {
            for (std::uint32_t connection = 0; connection < connectionsEach; ++connection) {
                connection % 3 == 2 ? BreakOff(frontEnd, connection) : Talk(frontEnd, connection);
            }
        });
    }
    frontEnds.Join();
    engineSide.Join();
}

void SocketRound::RunWithRestarts() {
    std::atomic<std::uint32_t> talking = frontEndCount;
    ThreadTeam frontEnds;
    for (std::uint32_t frontEnd = 0; frontEnd < frontEndCount; ++frontEnd) {
        frontEnds.Add([this, frontEnd, &talking] {
            for (std::uint32_t connection = 0; connection < 4 * connectionsEach; ++connection) {
                TryToTalk(frontEnd, connection);
            }
            --talking;
        });
    }
    while (talking > 0) {
        const std::uint64_t enough = triesAtEngine.Count() + eventsEach;
        while (talking > 0 && triesAtEngine.Count() < enough) {
            std::this_thread::yield();
        }
        Broadcast();
        RestartEngine();
    }
}

void SocketRound::CheckEnd() {
    EXPECT_EQ(atEngine.Problems(), std::vector<std::string>());
    EXPECT_EQ(triesAtEngine.Problems(), std::vector<std::string>());
    const std::lock_guard lock(linesMutex);
    for (const std::wstring& line : lines) {
        // A peer may break off in the middle of an event; any other message is an error.
        EXPECT_NE(line.find(L"it went in the middle of an event"), std::wstring::npos) << testing::PrintToString(line);
    }
}

void SocketRound::RestartEngine() {
    EndEngine();
    StartEngine();
    counts.Add("restarts of the engine");
}

/// Two threads send over one connection; everything has been returned when the front end disconnects.
void SocketRound::Talk(std::uint32_t frontEnd, std::uint32_t connection) {
    const std::wstring stream = std::to_wstring(frontEnd) + L"." + std::to_wstring(connection);
    StreamCheck echoes;
    StreamCheck broadcasts(StreamCheck::Streams::BegunAnywhere);
    CheckingHandler echo(echoes);
    CheckingHandler broadcast(broadcasts);
    const auto client = MakeClient();
    EXPECT_TRUE(client->IsConnected());
    client->AddEventHandler(L"echo", &echo);
    client->AddEventHandler(L"broadcast", &broadcast);
    {
        ThreadTeam senders;
        senders.Add([&] { Send(*client, stream + L"a"); });
        senders.Add([&] { Send(*client, stream + L"b"); });
    }
    while (echoes.Count() < 2 * eventsEach && client->IsConnected()) {
        std::this_thread::yield();
    }
    EXPECT_EQ(echoes.LastOf(stream + L"a"), eventsEach);
    EXPECT_EQ(echoes.LastOf(stream + L"b"), eventsEach);
    client->AddEventHandler(L"echo", nullptr);
    client->AddEventHandler(L"broadcast", nullptr);
    EXPECT_EQ(echoes.Problems(), std::vector<std::string>());
    EXPECT_EQ(broadcasts.Problems(), std::vector<std::string>());
    counts.Add("broadcasts taken", broadcasts.Count());
    counts.Add("connections");
}

/// Disconnects while events are under way in both directions and handlers run.
void SocketRound::BreakOff(std::uint32_t frontEnd, std::uint32_t connection) {
    StreamCheck echoes;
    CheckingHandler echo(echoes);
    auto client = MakeClient();
    client->AddEventHandler(L"echo", &echo);
    Send(*client, L"broken" + std::to_wstring(frontEnd) + L"." + std::to_wstring(connection));
    client.reset();
    EXPECT_EQ(echoes.Problems(), std::vector<std::string>());
    counts.Add("connections broken off");
}

/// Sends to an engine that restarts. Events over one connection arrive in order and whole.
void SocketRound::TryToTalk(std::uint32_t frontEnd, std::uint32_t connection) {
    const auto client = MakeClient();
    const std::wstring stream = L"try" + std::to_wstring(frontEnd) + L"." + std::to_wstring(connection);
    std::uint32_t sent = 0;
    for (std::uint32_t number = 1; number <= eventsEach; ++number) {
        const bool wasSent = client->SendEvent(L"try", NumberedEvent{stream, number}.Payload());
        sent += wasSent ? 1U : 0U;
    }
    counts.Add("events sent to an engine that comes and goes", sent);
    counts.Add("events refused without an engine", eventsEach - sent);
}

void SocketRound::Send(Client& client, const std::wstring& stream) {
    for (std::uint32_t number = 1; number <= eventsEach; ++number) {
        EXPECT_TRUE(client.SendEvent(L"number", NumberedEvent{stream, number}.Payload()));
    }
    counts.Add("events to the engine", eventsEach);
}

/// Limited to the number of events: an acknowledgement waits behind each broadcast that a front end has not read yet.
void SocketRound::Broadcast() {
    ++told;
    const std::uint32_t number = told;
    EXPECT_TRUE(engine->SendEvent(L"broadcast", NumberedEvent{L"all", number}.Payload()));
    counts.Add("broadcasts");
}

/// Each event finds exactly one of the two handlers.
void SocketRound::ChangeHandlers() {
    engine->AddEventHandler(L"number", &second);
    engine->AddEventHandler(L"number", &first);
    counts.Add("changes of a handler", 2);
}

void SocketRound::Note(const std::wstring& line) {
    const std::lock_guard lock(linesMutex);
    lines.push_back(line);
}

} // namespace

TEST(SocketStressTest, EveryEventArrivesOnceAndInOrderWhileFrontEndsComeAndBreakOff) {
    OperationCounts counts("local_socket");
    for (Rounds rounds; rounds.Next();) {
        const test_support::Deadline deadline("the events of a socket", std::chrono::minutes(5));
        SocketRound round(counts);
        round.Run();
        round.CheckEnd();
        counts.Add("rounds");
        if (testing::Test::HasFailure()) {
            return;
        }
    }
}

TEST(SocketStressTest, FrontEndsSendWhileTheirEngineEndsAndComesAgain) {
    OperationCounts counts("local_socket with restarts");
    for (Rounds rounds; rounds.Next();) {
        const test_support::Deadline deadline("an engine that comes and goes", std::chrono::minutes(5));
        SocketRound round(counts);
        round.RunWithRestarts();
        round.CheckEnd();
        counts.Add("rounds");
        if (testing::Test::HasFailure()) {
            return;
        }
    }
}
