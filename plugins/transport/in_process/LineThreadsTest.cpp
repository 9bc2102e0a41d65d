#include "transport/in_process/Bus.h"

#include "kit/Deadline.h"
#include "kit/doubles/RecordingHandler.h"

#include <atomic>
#include <future>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace {

/// A hang ends the program with a message.
class LineThreadsTest : public testing::Test {
protected:
    test_support::Deadline deadline{"the threads of a line"};
    in_process::Bus line;
    in_process::Endpoint* engine = line.GetServer();
    in_process::Endpoint* frontEnd = line.GetClient(L"");
};

TEST_F(LineThreadsTest, HandlersMaySendFromWithinHandlersBackAndForth) {
    RecordingHandler pong([this](const std::wstring& payload) { engine->SendEvent(L"pong", payload + L"x"); });
    RecordingHandler ping([this](const std::wstring& payload) {
        if (payload.size() < 1000) {
            frontEnd->SendEvent(L"ping", payload);
        }
    });
    engine->AddEventHandler(L"ping", &pong);
    frontEnd->AddEventHandler(L"pong", &ping);
    frontEnd->SendEvent(L"ping", L"");
    EXPECT_EQ(ping.handled.WaitFor(1000).back(), std::wstring(1000, L'x'));
    engine->AddEventHandler(L"ping", nullptr);
    frontEnd->AddEventHandler(L"pong", nullptr);
}

TEST_F(LineThreadsTest, PostingDoesNotWaitForTheHandler) {
    std::promise<void> release;
    RecordingHandler waiting([&](const std::wstring&) { release.get_future().wait(); });
    engine->AddEventHandler(L"e", &waiting);
    EXPECT_TRUE(frontEnd->PostEvent(L"e", L""));
    release.set_value();
    waiting.handled.WaitFor(1);
    engine->AddEventHandler(L"e", nullptr);
}

TEST_F(LineThreadsTest, SendingWaitsUntilTheAnswerHasBeenHandled) {
    std::atomic<int> handled = 0;
    RecordingHandler answer([&](const std::wstring&) {
        for (int turn = 0; turn < 1000; ++turn) {
            std::this_thread::yield(); // time for a faulty sender that does not wait
        }
        ++handled;
    });
    RecordingHandler request([&](const std::wstring&) { engine->SendEventTo(engine->CurrentPeer(), L"answer", L""); });
    engine->AddEventHandler(L"e", &request);
    frontEnd->AddEventHandler(L"answer", &answer);
    for (int number = 1; number <= 100; ++number) {
        EXPECT_TRUE(frontEnd->SendEvent(L"e", L""));
        EXPECT_EQ(handled, number);
    }
    engine->AddEventHandler(L"e", nullptr);
    frontEnd->AddEventHandler(L"answer", nullptr);
}

TEST_F(LineThreadsTest, SendingWaitsForADeferredAcknowledgement) {
    std::promise<EventTransmitterExtension::Acknowledgement> deferred;
    RecordingHandler request([&](const std::wstring&) { deferred.set_value(engine->DeferAcknowledgement()); });
    engine->AddEventHandler(L"e", &request);
    std::atomic<bool> isAnswered = false;
    std::jthread answering([&] {
        const auto acknowledgement = deferred.get_future().get();
        isAnswered = true;
        engine->Acknowledge(acknowledgement);
    });
    EXPECT_TRUE(frontEnd->SendEvent(L"e", L""));
    EXPECT_TRUE(isAnswered);
    engine->AddEventHandler(L"e", nullptr);
}

TEST_F(LineThreadsTest, AHandlerThatHangsIsWaitedForSoLong) {
    in_process::Bus impatient(std::chrono::milliseconds(1));
    std::promise<void> release;
    RecordingHandler hanging([released = release.get_future().share()](const std::wstring&) { released.wait(); });
    impatient.GetServer()->AddEventHandler(L"e", &hanging);
    EXPECT_FALSE(impatient.GetClient(L"")->SendEvent(L"e", L""));
    release.set_value();
    impatient.GetServer()->AddEventHandler(L"e", nullptr);
}

TEST_F(LineThreadsTest, WhatComesBeforeTheEnginesHandlersWaitsForThem) {
    RecordingHandler first;
    RecordingHandler second;
    EXPECT_TRUE(frontEnd->PostEvent(L"first", L"1"));
    EXPECT_TRUE(frontEnd->PostEvent(L"second", L"2"));
    engine->PauseDelivery();
    engine->AddEventHandler(L"first", &first);
    EXPECT_TRUE(frontEnd->PostEvent(L"second", L"3"));
    engine->AddEventHandler(L"second", &second);
    engine->ResumeDelivery();
    EXPECT_EQ(second.handled.WaitFor(2), (std::vector<std::wstring>{L"2", L"3"}));
    EXPECT_EQ(first.handled.WaitFor(1), std::vector<std::wstring>{L"1"});
    engine->AddEventHandler(L"first", nullptr);
    engine->AddEventHandler(L"second", nullptr);
}

TEST_F(LineThreadsTest, TakingAHandlerAwayWaitsUntilItsRunIsOver) {
    std::promise<void> started;
    std::promise<void> isTakenAway;
    std::atomic<bool> hasEnded = false;
    RecordingHandler handler([&](const std::wstring&) {
        started.set_value();
        isTakenAway.get_future().wait();
        for (int turn = 0; turn < 1000; ++turn) {
            std::this_thread::yield(); // time for a faulty remover that does not wait
        }
        hasEnded = true;
    });
    engine->AddEventHandler(L"e", &handler);
    frontEnd->PostEvent(L"e", L"");
    started.get_future().wait();
    isTakenAway.set_value();
    engine->AddEventHandler(L"e", nullptr);
    EXPECT_TRUE(hasEnded);
}

TEST_F(LineThreadsTest, AHandlerMayTakeItselfAway) {
    RecordingHandler once([this](const std::wstring&) { engine->AddEventHandler(L"e", nullptr); });
    RecordingHandler last;
    engine->AddEventHandler(L"e", &once);
    engine->AddEventHandler(L"last", &last);
    frontEnd->SendEvent(L"e", L"one");
    frontEnd->SendEvent(L"e", L"two");
    frontEnd->SendEvent(L"last", L"");
    last.handled.WaitFor(1);
    EXPECT_EQ(once.handled.WaitFor(1), std::vector<std::wstring>{L"one"});
    engine->AddEventHandler(L"last", nullptr);
}

TEST_F(LineThreadsTest, HandlersOfOneEndRunOneAtATimeWhoeverSends) {
    constexpr int senderCount = 8;
    constexpr int eventsEach = 200;
    std::atomic<int> running = 0;
    std::atomic<int> overlaps = 0;
    RecordingHandler handler([&](const std::wstring&) {
        overlaps += running++ == 0 ? 0 : 1;
        --running;
    });
    engine->AddEventHandler(L"e", &handler);
    std::vector<std::jthread> senders;
    for (int number = 0; number < senderCount; ++number) {
        in_process::Endpoint* const sender = line.GetClient(std::to_wstring(number));
        senders.emplace_back([sender] {
            for (int event = 0; event < eventsEach; ++event) {
                sender->SendEvent(L"e", L"");
            }
        });
    }
    EXPECT_EQ(handler.handled.WaitFor(senderCount * eventsEach).size(),
              static_cast<std::size_t>(senderCount * eventsEach));
    EXPECT_EQ(overlaps, 0);
    engine->AddEventHandler(L"e", nullptr);
}

TEST_F(LineThreadsTest, AHandlerMaySendWhileItsLineEnds) {
    std::promise<void> started;
    std::promise<void> lineEnds;
    auto ending = std::make_unique<in_process::Bus>();
    in_process::Endpoint* const end = ending->GetServer();
    RecordingHandler handler([&](const std::wstring&) {
        started.set_value();
        lineEnds.get_future().wait();
        for (int turn = 0; turn < 1000; ++turn) {
            std::this_thread::yield(); // time for a faulty end that does not wait
            end->SendEvent(L"answer", L"");
        }
    });
    end->AddEventHandler(L"e", &handler);
    ending->GetClient(L"")->PostEvent(L"e", L"");
    started.get_future().wait();
    lineEnds.set_value();
    ending.reset();
    EXPECT_EQ(handler.handled.WaitFor(1).size(), 1U);
}

TEST_F(LineThreadsTest, HandlersComeAndGoWhileEventsArrive) {
    std::jthread sender([this](const std::stop_token& stop) {
        while (!stop.stop_requested()) {
            frontEnd->SendEvent(L"e", L"");
            std::this_thread::yield();
        }
    });
    for (int round = 0; round < 200; ++round) {
        RecordingHandler handler;
        engine->AddEventHandler(L"e", &handler);
        handler.handled.WaitFor(1);
        engine->AddEventHandler(L"e", nullptr);
    }
}

} // namespace
