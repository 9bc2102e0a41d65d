#include <chrono>
#include <future>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "kit/Deadline.h"
#include "kit/local_socket/LineFixture.h"

namespace {

using local_socket::Client;

using Payloads = std::vector<std::wstring>;

class LineTest : public LineFixture {};

/// On a loaded machine a pipe may stay busy for longer than one attempt to connect.
bool SendInTime(Client& client, const std::wstring& eventName, const std::wstring& payload) {
    const auto end = std::chrono::steady_clock::now() + test_support::timeout;
    bool isSent = false;
    do {
        isSent = client.SendEvent(eventName, payload);
    } while (!isSent && std::chrono::steady_clock::now() < end);
    return isSent;
}

/// Sends a request and waits for its response: everything sent before has then arrived.
void AskAndWait(Client& client) {
    RecordingHandler answer;
    client.AddEventHandler(L"Answer", &answer);
    EXPECT_TRUE(client.SendEvent(L"Ask", L""));
    EXPECT_EQ(answer.payloads.WaitFor(1).size(), 1u);
    client.AddEventHandler(L"Answer", nullptr);
}

TEST_F(LineTest, AnEventReachesTheEngineAndItsAnswerTheFrontEndThatAsked) {
    const auto engine = Engine();
    ASSERT_TRUE(engine);
    EXPECT_TRUE(engine->IsConnected());
    RecordingHandler request([&](const std::wstring& payload) {
        EXPECT_TRUE(engine->SendEventTo(engine->CurrentPeer(), L"Answer", L"to " + payload));
    });
    engine->AddEventHandler(L"Ask", &request);
    const auto asking = MakeClient();
    const auto other = MakeClient();
    RecordingHandler answer;
    RecordingHandler stray;
    asking->AddEventHandler(L"Answer", &answer);
    other->AddEventHandler(L"Answer", &stray);

    EXPECT_TRUE(asking->SendEvent(L"Ask", L"one"));
    EXPECT_EQ(answer.payloads.WaitFor(1), Payloads{L"to one"});
    EXPECT_TRUE(other->SendEvent(L"Ask", L"two"));
    EXPECT_EQ(stray.payloads.WaitFor(1), Payloads{L"to two"});
    EXPECT_EQ(answer.payloads.All(), Payloads{L"to one"});
    asking->AddEventHandler(L"Answer", nullptr);
    other->AddEventHandler(L"Answer", nullptr);
    engine->AddEventHandler(L"Ask", nullptr);
}

TEST_F(LineTest, AnEventOfTheEngineReachesEveryFrontEnd) {
    const auto engine = Engine();
    const auto first = MakeClient();
    const auto second = MakeClient();
    RecordingHandler atFirst;
    RecordingHandler atSecond;
    first->AddEventHandler(L"UpdateProgress", &atFirst);
    second->AddEventHandler(L"UpdateProgress", &atSecond);
    EXPECT_TRUE(engine->SendEvent(L"UpdateProgress", L"30"));
    EXPECT_EQ(atFirst.payloads.WaitFor(1), Payloads{L"30"});
    EXPECT_EQ(atSecond.payloads.WaitFor(1), Payloads{L"30"});
    first->AddEventHandler(L"UpdateProgress", nullptr);
    second->AddEventHandler(L"UpdateProgress", nullptr);
}

TEST_F(LineTest, ToNobodyIsSentAsWell) {
    EXPECT_TRUE(Engine()->SendEvent(L"UpdateProgress", L"30"));
}

TEST_F(LineTest, EventsArriveInOrder) {
    constexpr int count = 2000;
    const auto engine = Engine();
    RecordingHandler handler;
    engine->AddEventHandler(L"Number", &handler);
    const auto client = MakeClient();
    Payloads expected;
    for (int number = 0; number < count; ++number) {
        expected.push_back(std::to_wstring(number));
        ASSERT_TRUE(client->PostEvent(L"Number", expected.back()));
    }
    EXPECT_EQ(handler.payloads.WaitFor(count), expected);
    engine->AddEventHandler(L"Number", nullptr);
}

TEST_F(LineTest, EveryTextArrivesUnchanged) {
    const auto engine = Engine();
    RecordingHandler handler;
    const std::wstring name = L"N\u00e4me" + std::wstring(1, static_cast<wchar_t>(0xDC80));
    engine->AddEventHandler(name, &handler);
    const auto client = MakeClient();
    const Payloads texts{L"", std::wstring(L"a\0b", 3), L"\U0001f600",
                         std::wstring(1, static_cast<wchar_t>(0xD800)) + L"x",
                         L"x" + std::wstring(1, static_cast<wchar_t>(0xDCFF))};
    for (const std::wstring& text : texts) {
        EXPECT_TRUE(client->SendEvent(name, text));
    }
    EXPECT_EQ(handler.payloads.WaitFor(texts.size()), texts);
    engine->AddEventHandler(name, nullptr);
}

TEST_F(LineTest, APayloadOf20MegabytesArrivesUnchanged) {
    // Slow under a sanitizer.
    limits.acknowledgement = std::chrono::hours(1);
    const auto engine = Engine();
    const std::wstring payload(std::size_t{20} << 20, L'j');
    RecordingHandler request(
        [&](const std::wstring&) { EXPECT_TRUE(engine->SendEventTo(engine->CurrentPeer(), L"Answer", payload)); });
    engine->AddEventHandler(L"Ask", &request);
    const auto client = MakeClient();
    RecordingHandler answer;
    client->AddEventHandler(L"Answer", &answer);
    EXPECT_TRUE(client->SendEvent(L"Ask", L""));
    EXPECT_TRUE(answer.payloads.WaitFor(1) == Payloads{payload});
    engine->AddEventHandler(L"Ask", nullptr);
    client->AddEventHandler(L"Answer", nullptr);
}

TEST_F(LineTest, AnEventThatIsTooBigIsRefusedWithALogLine) {
    const auto engine = Engine();
    EXPECT_FALSE(engine->SendEvent(std::wstring(300, L'n'), L"{}"));
    EXPECT_FALSE(engine->SendEvent(L"", L"{}"));
    EXPECT_EQ(log.lines.All().size(), 2u);
}

TEST_F(LineTest, WithoutAnEngineNothingIsSentAndNothingIsLogged) {
    const auto client = MakeClient();
    EXPECT_FALSE(client->IsConnected());
    EXPECT_FALSE(client->SendEvent(L"Ask", L""));
    EXPECT_EQ(log.lines.All(), Payloads{});
}

TEST_F(LineTest, AFrontEndMayBeThereBeforeTheEngine) {
    const auto client = MakeClient();
    const auto engine = Engine();
    RecordingHandler request;
    engine->AddEventHandler(L"Ask", &request);
    EXPECT_TRUE(client->SendEvent(L"Ask", L"late"));
    EXPECT_EQ(request.payloads.WaitFor(1), Payloads{L"late"});
    engine->AddEventHandler(L"Ask", nullptr);
}

TEST_F(LineTest, WhatAFrontEndSentBeforeItWentArrives) {
    const auto engine = Engine();
    RecordingHandler request;
    engine->AddEventHandler(L"Ask", &request);
    for (int number = 0; number < 20; ++number) {
        const auto client = MakeClient();
        EXPECT_TRUE(engine->SendEvent(L"UpdateProgress", L"not taken"));
        EXPECT_TRUE(client->PostEvent(L"Ask", L"bye"));
    }
    EXPECT_EQ(request.payloads.WaitFor(20), Payloads(20, L"bye"));
    engine->AddEventHandler(L"Ask", nullptr);
}

TEST_F(LineTest, APeerThatIsGoneGetsNoAnswer) {
    const auto engine = Engine();
    std::promise<EventTransmitterExtension::Peer> sender;
    RecordingHandler request([&](const std::wstring&) { sender.set_value(engine->CurrentPeer()); });
    engine->AddEventHandler(L"Ask", &request);
    auto client = MakeClient();
    EXPECT_TRUE(client->SendEvent(L"Ask", L""));
    const EventTransmitterExtension::Peer peer = sender.get_future().get();
    EXPECT_TRUE(engine->SendEventTo(peer, L"Answer", L""));
    client.reset();
    const auto end = std::chrono::steady_clock::now() + test_support::timeout;
    while (engine->SendEventTo(peer, L"Answer", L"") && std::chrono::steady_clock::now() < end) {
        std::this_thread::yield();
    }
    EXPECT_FALSE(engine->SendEventTo(peer, L"Answer", L""));
    EXPECT_FALSE(engine->SendEventTo(0, L"Answer", L""));
    EXPECT_EQ(engine->CurrentPeer(), 0u);
    engine->AddEventHandler(L"Ask", nullptr);
}

TEST_F(LineTest, ASecondEngineOfTheSameNameIsRefused) {
    auto first = Engine();
    EXPECT_TRUE(first);
    EXPECT_FALSE(Engine());
    const Payloads lines = log.lines.All();
    ASSERT_EQ(lines.size(), 1u) << testing::PrintToString(lines);
    EXPECT_NE(lines[0].find(L"another engine listens there"), std::wstring::npos) << testing::PrintToString(lines);
    EXPECT_TRUE(MakeClient()->IsConnected());
    first.reset();
    EXPECT_TRUE(Engine());
}

TEST_F(LineTest, FiftyFrontEndsAtOnceAreAllAnswered) {
    const auto engine = Engine();
    RecordingHandler request([&](const std::wstring& payload) {
        EXPECT_TRUE(engine->SendEventTo(engine->CurrentPeer(), L"Answer", payload));
    });
    engine->AddEventHandler(L"Ask", &request);
    std::vector<std::future<Payloads>> clients;
    for (int number = 0; number < 50; ++number) {
        clients.push_back(std::async(std::launch::async, [this, number] {
            const auto client = MakeClient();
            RecordingHandler answer;
            client->AddEventHandler(L"Answer", &answer);
            EXPECT_TRUE(SendInTime(*client, L"Ask", std::to_wstring(number)));
            Payloads answers = answer.payloads.WaitFor(1);
            client->AddEventHandler(L"Answer", nullptr);
            return answers;
        }));
    }
    for (int number = 0; number < 50; ++number) {
        EXPECT_EQ(clients[static_cast<std::size_t>(number)].get(), Payloads{std::to_wstring(number)});
    }
    engine->AddEventHandler(L"Ask", nullptr);
}

TEST_F(LineTest, MoreFrontEndsThanAllowedAreToldThatTheEngineIsBusy) {
    limits.peers = 2;
    const auto engine = Engine();
    const auto first = MakeClient();
    auto second = MakeClient();
    const auto third = MakeClient();
    EXPECT_TRUE(first->IsConnected());
    EXPECT_FALSE(third->IsConnected());
    for (int attempt = 0; attempt < 20; ++attempt) {
        std::wstring problem;
        EXPECT_FALSE(third->Connect(problem));
        EXPECT_EQ(problem, L"it is busy: 2 front ends are connected, as many as it serves at a time; end some of them, "
                           L"or try again later");
        EXPECT_TRUE(third->IsBusy());
    }
    // One line per end, however many attempts.
    const Payloads lines = log.lines.WaitFor(2);
    EXPECT_EQ(lines.size(), 2u) << testing::PrintToString(lines);
}

TEST_F(LineTest, AFrontEndThatWasTurnedAwayIsTakenWhenThereIsRoom) {
    limits.peers = 1;
    const auto engine = Engine();
    auto first = MakeClient();
    const auto second = MakeClient();
    EXPECT_TRUE(second->IsBusy());
    first.reset();
    const test_support::Deadline deadline("room for the second front end");
    std::wstring problem;
    while (!second->Connect(problem)) {
        std::this_thread::yield();
    }
    EXPECT_EQ(problem, L"");
    EXPECT_TRUE(second->IsConnected());
    EXPECT_FALSE(second->IsBusy());
}

TEST_F(LineTest, AFrontEndThatTakesNothingIsDroppedAndHoldsUpNobody) {
    limits.outgoingBytes = std::size_t{1} << 20;
    limits.undeliveredBytes = std::size_t{64} << 10;
    const auto engine = Engine();
    RecordingHandler request(
        [&](const std::wstring&) { EXPECT_TRUE(engine->SendEventTo(engine->CurrentPeer(), L"Answer", L"")); });
    engine->AddEventHandler(L"Ask", &request);

    const auto slow = MakeClient();
    std::promise<void> release;
    const std::shared_future<void> released = release.get_future().share();
    RecordingHandler stuck([&](const std::wstring&) { released.wait(); });
    slow->AddEventHandler(L"Big", &stuck);
    const auto quick = MakeClient();
    RecordingHandler taken;
    quick->AddEventHandler(L"Big", &taken);

    const std::wstring payload(std::size_t{256} << 10, L'p');
    for (std::size_t sent = 1; log.lines.All().empty() && sent <= 1000; ++sent) {
        EXPECT_TRUE(engine->SendEvent(L"Big", payload));
        EXPECT_EQ(taken.payloads.WaitFor(sent).size(), sent);
    }
    const Payloads lines = log.lines.All();
    ASSERT_EQ(lines.size(), 1u) << testing::PrintToString(lines);
    EXPECT_NE(lines[0].find(L"it does not take its events"), std::wstring::npos);
    AskAndWait(*quick);
    release.set_value();
    WaitUntilDisconnected(*slow);
    EXPECT_FALSE(slow->IsConnected());
    slow->AddEventHandler(L"Big", nullptr);
    quick->AddEventHandler(L"Big", nullptr);
    engine->AddEventHandler(L"Ask", nullptr);
}

TEST_F(LineTest, AHandlerMaySendAndChangeHandlers) {
    const auto engine = Engine();
    RecordingHandler second;
    RecordingHandler first([&](const std::wstring&) {
        engine->AddEventHandler(L"Second", &second);
        engine->AddEventHandler(L"First", nullptr);
        EXPECT_TRUE(engine->SendEvent(L"Answer", L"from the handler"));
    });
    engine->AddEventHandler(L"First", &first);
    const auto client = MakeClient();
    RecordingHandler answer;
    client->AddEventHandler(L"Answer", &answer);
    EXPECT_TRUE(client->SendEvent(L"First", L"1"));
    EXPECT_TRUE(client->SendEvent(L"First", L"2"));
    EXPECT_TRUE(client->SendEvent(L"Second", L"3"));
    EXPECT_EQ(second.payloads.WaitFor(1), Payloads{L"3"});
    EXPECT_EQ(first.payloads.All(), Payloads{L"1"});
    EXPECT_EQ(answer.payloads.WaitFor(1), Payloads{L"from the handler"});
    engine->AddEventHandler(L"Second", nullptr);
    client->AddEventHandler(L"Answer", nullptr);
}

TEST_F(LineTest, AHandlerThatThrowsIsLoggedAndTheNextEventIsDelivered) {
    const auto engine = Engine();
    RecordingHandler request([](const std::wstring& payload) {
        if (payload == L"bad") {
            throw std::runtime_error("no use");
        }
    });
    engine->AddEventHandler(L"Ask", &request);
    const auto client = MakeClient();
    EXPECT_TRUE(client->SendEvent(L"Ask", L"bad"));
    EXPECT_TRUE(client->SendEvent(L"Ask", L"good"));
    EXPECT_EQ(request.payloads.WaitFor(2), (Payloads{L"bad", L"good"}));
    const Payloads lines = log.lines.All();
    ASSERT_EQ(lines.size(), 1u) << testing::PrintToString(lines);
    EXPECT_NE(lines[0].find(L"A handler failed: no use."), std::wstring::npos);
    engine->AddEventHandler(L"Ask", nullptr);
}

} // namespace
