#include <atomic>
#include <chrono>
#include <future>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "kit/Deadline.h"
#include "kit/local_socket/LineFixture.h"

namespace {

using local_socket::Client;
using local_socket::Server;

using Payloads = std::vector<std::wstring>;

class LineEndTest : public LineFixture {};

/// Waits until the connection to this peer has ended. Unlike `IsConnected`, `SendEventTo` does not wait for handlers.
bool IsGoneInTime(Client& client, Client::Peer peer) {
    const auto end = std::chrono::steady_clock::now() + test_support::timeout;
    bool isGone = false;
    do {
        std::this_thread::yield();
        isGone = !client.SendEventTo(peer, L"Ask", L"");
    } while (!isGone && std::chrono::steady_clock::now() < end);
    return isGone;
}

TEST_F(LineEndTest, AFrontEndSeesTheEngineGoAndFindsANewOneWhenItSends) {
    auto engine = Engine();
    const auto client = MakeClient();
    EXPECT_TRUE(client->IsConnected());
    engine.reset();
    WaitUntilDisconnected(*client);
    EXPECT_FALSE(client->IsConnected());
    EXPECT_FALSE(client->SendEvent(L"Ask", L"nobody"));

    engine = Engine();
    RecordingHandler request;
    engine->AddEventHandler(L"Ask", &request);
    EXPECT_TRUE(client->SendEvent(L"Ask", L"again"));
    EXPECT_TRUE(client->IsConnected());
    EXPECT_EQ(request.payloads.WaitFor(1), Payloads{L"again"});
    engine->AddEventHandler(L"Ask", nullptr);
}

TEST_F(LineEndTest, TheEndOfAnEngineIsSeenAfterTheAnswersThatArrivedBefore) {
    auto engine = Engine();
    const auto client = MakeClient();
    std::promise<void> release;
    std::promise<Client::Peer> started;
    std::atomic<bool> wasConnected = true;
    RecordingHandler first([&, released = release.get_future().share()](const std::wstring&) {
        started.set_value(client->CurrentPeer());
        released.wait();
        wasConnected = client->IsConnected();
    });
    RecordingHandler last;
    client->AddEventHandler(L"First", &first);
    client->AddEventHandler(L"Last", &last);
    EXPECT_TRUE(engine->SendEvent(L"First", L""));
    EXPECT_TRUE(engine->SendEvent(L"Last", L""));
    engine.reset();
    EXPECT_TRUE(IsGoneInTime(*client, started.get_future().get()));
    EXPECT_TRUE(client->IsConnected());
    release.set_value();
    WaitUntilDisconnected(*client);
    EXPECT_FALSE(client->IsConnected());
    EXPECT_EQ(last.handled.All().size(), 1u);
    // A handler that waits for the end does not wait for itself.
    EXPECT_FALSE(wasConnected);
    client->AddEventHandler(L"First", nullptr);
    client->AddEventHandler(L"Last", nullptr);
}

TEST_F(LineEndTest, AFrontEndThatIsStoppedBeforeItsAnswersAreHandledIsNotConnected) {
    const auto engine = Engine();
    const auto client = MakeClient();
    std::promise<void> release;
    std::promise<void> started;
    RecordingHandler first([&, released = release.get_future().share()](const std::wstring&) {
        started.set_value();
        released.wait();
    });
    client->AddEventHandler(L"First", &first);
    EXPECT_TRUE(engine->SendEvent(L"First", L""));
    EXPECT_TRUE(engine->SendEvent(L"Last", L""));
    started.get_future().wait();
    EXPECT_FALSE(client->Stop(std::chrono::milliseconds::zero()));
    EXPECT_FALSE(client->IsConnected());
    release.set_value();
    client->AddEventHandler(L"First", nullptr);
}

TEST_F(LineEndTest, WhatWasSentBeforeTheEndArrives) {
    auto engine = Engine();
    const auto client = MakeClient();
    RecordingHandler atClient;
    client->AddEventHandler(L"Answer", &atClient);
    const std::wstring large(std::size_t{4} << 20, L'x'); // more than the system takes at once
    EXPECT_TRUE(engine->SendEvent(L"Answer", large));
    EXPECT_TRUE(engine->SendEvent(L"Answer", L"last"));
    engine.reset();
    EXPECT_TRUE(atClient.payloads.WaitFor(2) == (Payloads{large, L"last"}));
    client->AddEventHandler(L"Answer", nullptr);
}

TEST_F(LineEndTest, WhoDoesNotTakeItDoesNotHoldUpTheEnd) {
    limits.drain = std::chrono::milliseconds(20);
    limits.undeliveredBytes = 1;
    auto engine = Engine();
    const auto client = MakeClient();
    std::promise<void> release;
    RecordingHandler atClient([&](const std::wstring&) { release.get_future().wait(); });
    client->AddEventHandler(L"Answer", &atClient);
    EXPECT_TRUE(engine->SendEvent(L"Answer", L"first"));
    EXPECT_EQ(atClient.payloads.WaitFor(1), Payloads{L"first"});
    EXPECT_TRUE(engine->SendEvent(L"Answer", std::wstring(std::size_t{4} << 20, L'x')));
    engine.reset();
    release.set_value();
    WaitUntilDisconnected(*client);
    EXPECT_EQ(atClient.payloads.All(), Payloads{L"first"});
    client->AddEventHandler(L"Answer", nullptr);
}

TEST_F(LineEndTest, AStoppedEndSendsNothing) {
    const auto engine = Engine();
    const auto client = MakeClient();
    EXPECT_TRUE(client->Stop(test_support::timeout));
    EXPECT_FALSE(client->SendEvent(L"Ask", L""));
    EXPECT_FALSE(client->IsConnected());
    EXPECT_TRUE(engine->Stop(test_support::timeout));
    EXPECT_FALSE(engine->SendEvent(L"UpdateProgress", L""));
    EXPECT_FALSE(engine->IsConnected());
}

TEST_F(LineEndTest, AHandlerMaySendWhileItsEndIsDestroyed) {
    auto engine = Engine();
    Server& ending = *engine; // as handlers know it
    std::promise<void> started;
    std::promise<bool> sent;
    RecordingHandler request([&](const std::wstring&) {
        started.set_value();
        while (ending.IsConnected()) {
            std::this_thread::yield();
        }
        for (int turn = 0; turn < 1000; ++turn) {
            std::this_thread::yield(); // time for a faulty end that does not wait
        }
        sent.set_value(ending.SendEvent(L"Answer", L""));
    });
    engine->AddEventHandler(L"Ask", &request);
    const auto client = MakeClient();
    ASSERT_TRUE(client->PostEvent(L"Ask", L""));
    started.get_future().wait();
    engine.reset();
    EXPECT_FALSE(sent.get_future().get());
}

TEST_F(LineEndTest, StoppingDoesNotWaitForAHandlerForEver) {
    auto engine = Engine();
    std::promise<void> started;
    std::promise<void> release;
    RecordingHandler request([&](const std::wstring&) {
        started.set_value();
        release.get_future().wait();
    });
    engine->AddEventHandler(L"Ask", &request);
    const auto client = MakeClient();
    ASSERT_TRUE(client->PostEvent(L"Ask", L""));
    started.get_future().wait();
    EXPECT_FALSE(engine->Stop(std::chrono::milliseconds(1)));
    release.set_value();
    engine->AddEventHandler(L"Ask", nullptr);
}

} // namespace
