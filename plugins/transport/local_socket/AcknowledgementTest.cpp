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

using Payloads = std::vector<std::wstring>;

class AcknowledgementTest : public LineFixture {};

TEST_F(AcknowledgementTest, SendingWaitsUntilTheAnswerHasBeenHandled) {
    const auto engine = Engine();
    std::atomic<int> handled = 0;
    RecordingHandler request(
        [&](const std::wstring&) { EXPECT_TRUE(engine->SendEventTo(engine->CurrentPeer(), L"Answer", L"")); });
    RecordingHandler answer([&](const std::wstring&) {
        for (int turn = 0; turn < 1000; ++turn) {
            std::this_thread::yield(); // time for a faulty sender that does not wait
        }
        ++handled;
    });
    engine->AddEventHandler(L"Ask", &request);
    const auto client = MakeClient();
    client->AddEventHandler(L"Answer", &answer);
    for (int number = 1; number <= 50; ++number) {
        EXPECT_TRUE(client->SendEvent(L"Ask", L""));
        EXPECT_EQ(handled, number);
    }
    engine->AddEventHandler(L"Ask", nullptr);
    client->AddEventHandler(L"Answer", nullptr);
}

TEST_F(AcknowledgementTest, SendingWaitsForADeferredAcknowledgement) {
    const auto engine = Engine();
    std::promise<EventTransmitterExtension::Acknowledgement> deferred;
    RecordingHandler request([&](const std::wstring&) { deferred.set_value(engine->DeferAcknowledgement()); });
    engine->AddEventHandler(L"Ask", &request);
    const auto client = MakeClient();
    std::atomic<bool> isAnswered = false;
    std::jthread answering([&] {
        const auto acknowledgement = deferred.get_future().get();
        isAnswered = true;
        engine->Acknowledge(acknowledgement);
    });
    EXPECT_TRUE(client->SendEvent(L"Ask", L""));
    EXPECT_TRUE(isAnswered);
    EXPECT_EQ(engine->DeferAcknowledgement(), 0u);
    engine->AddEventHandler(L"Ask", nullptr);
}

TEST_F(AcknowledgementTest, AnEngineThatHangsIsWaitedForSoLong) {
    limits.acknowledgement = std::chrono::milliseconds(20);
    const auto engine = Engine();
    std::promise<void> release;
    RecordingHandler hanging([released = release.get_future().share()](const std::wstring&) { released.wait(); });
    engine->AddEventHandler(L"Ask", &hanging);
    const auto client = MakeClient();
    EXPECT_FALSE(client->SendEvent(L"Ask", L""));
    EXPECT_TRUE(client->IsConnected());
    release.set_value();
    engine->AddEventHandler(L"Ask", nullptr);
}

TEST_F(AcknowledgementTest, AnEngineThatGoesIsNotWaitedFor) {
    auto engine = Engine();
    std::promise<void> started;
    RecordingHandler request([&](const std::wstring&) {
        engine->DeferAcknowledgement();
        started.set_value();
    });
    engine->AddEventHandler(L"Ask", &request);
    const auto client = MakeClient();
    std::future<bool> sent = std::async(std::launch::async, [&] { return client->SendEvent(L"Ask", L""); });
    started.get_future().wait();
    engine.reset();
    EXPECT_FALSE(sent.get());
    for (const std::wstring& line : log.lines.All()) {
        EXPECT_EQ(line.find(L"has not acknowledged"), std::wstring::npos) << testing::PrintToString(line);
    }
}

TEST_F(AcknowledgementTest, AFrontEndThatStopsDoesNotWaitAnyLonger) {
    const auto engine = Engine();
    std::promise<void> started;
    RecordingHandler request([&](const std::wstring&) {
        engine->DeferAcknowledgement();
        started.set_value();
    });
    engine->AddEventHandler(L"Ask", &request);
    const auto client = MakeClient();
    std::future<bool> sent = std::async(std::launch::async, [&] { return client->SendEvent(L"Ask", L""); });
    started.get_future().wait();
    EXPECT_TRUE(client->Stop(test_support::timeout));
    EXPECT_FALSE(sent.get());
    engine->AddEventHandler(L"Ask", nullptr);
}

TEST_F(AcknowledgementTest, OutOfAHandlerNobodyIsWaitedFor) {
    limits.acknowledgement = std::chrono::hours(1);
    const auto engine = Engine();
    const auto client = MakeClient();
    std::promise<bool> sent;
    RecordingHandler second;
    // Runs on the thread that would have to handle the sent event.
    RecordingHandler first([&](const std::wstring&) { sent.set_value(client->SendEvent(L"Second", L"2")); });
    engine->AddEventHandler(L"First", &first);
    engine->AddEventHandler(L"Second", &second);
    EXPECT_TRUE(client->SendEvent(L"First", L"1"));
    EXPECT_TRUE(sent.get_future().get());
    EXPECT_EQ(second.payloads.WaitFor(1), Payloads{L"2"});
    engine->AddEventHandler(L"First", nullptr);
    engine->AddEventHandler(L"Second", nullptr);
}

TEST_F(AcknowledgementTest, WhatComesBeforeTheEnginesHandlersWaitsForThem) {
    const auto engine = Engine();
    const auto client = MakeClient();
    RecordingHandler first;
    RecordingHandler second;
    EXPECT_TRUE(client->PostEvent(L"Second", L"1"));
    engine->PauseDelivery();
    engine->AddEventHandler(L"First", &first);
    std::future<bool> sent = std::async(std::launch::async, [&] { return client->SendEvent(L"Second", L"2"); });
    engine->AddEventHandler(L"Second", &second);
    EXPECT_EQ(second.payloads.All(), Payloads{});
    engine->ResumeDelivery();
    EXPECT_TRUE(sent.get());
    EXPECT_EQ(second.payloads.All(), (Payloads{L"1", L"2"}));
    engine->AddEventHandler(L"First", nullptr);
    engine->AddEventHandler(L"Second", nullptr);
}

} // namespace
