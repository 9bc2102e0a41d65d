#include "in_process/Line.h"

#include "EventRecorder.h"
#include "support/Deadline.h"

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
    in_process::Line line;
    EventTransmitter* engine = line.Engine();
    EventTransmitter* frontEnd = line.FrontEndCalled(L"");
};

TEST_F(LineThreadsTest, HandlersMaySendFromWithinHandlersBackAndForth) {
    EventRecorder pong([this](const std::wstring& payload) { engine->SendEvent(L"pong", payload + L"x"); });
    EventRecorder ping([this](const std::wstring& payload) {
        if (payload.size() < 1000) {
            frontEnd->SendEvent(L"ping", payload);
        }
    });
    engine->AddEventHandler(L"ping", &pong);
    frontEnd->AddEventHandler(L"pong", &ping);
    frontEnd->SendEvent(L"ping", L"");
    EXPECT_EQ(ping.WaitFor(1000).back(), std::wstring(1000, L'x'));
    engine->AddEventHandler(L"ping", nullptr);
    frontEnd->AddEventHandler(L"pong", nullptr);
}

TEST_F(LineThreadsTest, SendingDoesNotWaitForTheHandler) {
    std::promise<void> release;
    EventRecorder waiting([&](const std::wstring&) { release.get_future().wait(); });
    engine->AddEventHandler(L"e", &waiting);
    EXPECT_TRUE(frontEnd->SendEvent(L"e", L""));
    release.set_value();
    waiting.WaitFor(1);
    engine->AddEventHandler(L"e", nullptr);
}

TEST_F(LineThreadsTest, TakingAHandlerAwayWaitsUntilItsRunIsOver) {
    std::promise<void> started;
    std::promise<void> isTakenAway;
    std::atomic<bool> hasEnded = false;
    EventRecorder handler([&](const std::wstring&) {
        started.set_value();
        isTakenAway.get_future().wait();
        for (int turn = 0; turn < 1000; ++turn) {
            std::this_thread::yield(); // time for a remover that does not wait
        }
        hasEnded = true;
    });
    engine->AddEventHandler(L"e", &handler);
    frontEnd->SendEvent(L"e", L"");
    started.get_future().wait();
    isTakenAway.set_value();
    engine->AddEventHandler(L"e", nullptr);
    EXPECT_TRUE(hasEnded);
}

TEST_F(LineThreadsTest, AHandlerMayTakeItselfAway) {
    EventRecorder once([this](const std::wstring&) { engine->AddEventHandler(L"e", nullptr); });
    EventRecorder last;
    engine->AddEventHandler(L"e", &once);
    engine->AddEventHandler(L"last", &last);
    frontEnd->SendEvent(L"e", L"one");
    frontEnd->SendEvent(L"e", L"two");
    frontEnd->SendEvent(L"last", L"");
    last.WaitFor(1);
    EXPECT_EQ(once.WaitFor(1), std::vector<std::wstring>{L"one"});
    engine->AddEventHandler(L"last", nullptr);
}

TEST_F(LineThreadsTest, HandlersOfOneEndRunOneAtATimeWhoeverSends) {
    constexpr int senderCount = 8;
    constexpr int eventsEach = 200;
    std::atomic<int> running = 0;
    std::atomic<int> overlaps = 0;
    EventRecorder handler([&](const std::wstring&) {
        overlaps += running++ == 0 ? 0 : 1;
        --running;
    });
    engine->AddEventHandler(L"e", &handler);
    std::vector<std::jthread> senders;
    for (int number = 0; number < senderCount; ++number) {
        EventTransmitter* const sender = line.FrontEndCalled(std::to_wstring(number));
        senders.emplace_back([sender] {
            for (int event = 0; event < eventsEach; ++event) {
                sender->SendEvent(L"e", L"");
            }
        });
    }
    EXPECT_EQ(handler.WaitFor(senderCount * eventsEach).size(), static_cast<std::size_t>(senderCount * eventsEach));
    EXPECT_EQ(overlaps, 0);
    engine->AddEventHandler(L"e", nullptr);
}

TEST_F(LineThreadsTest, AHandlerMaySendWhileItsLineEnds) {
    std::promise<void> started;
    std::promise<void> lineEnds;
    auto ending = std::make_unique<in_process::Line>();
    EventTransmitter* const end = ending->Engine();
    EventRecorder handler([&](const std::wstring&) {
        started.set_value();
        lineEnds.get_future().wait();
        for (int turn = 0; turn < 1000; ++turn) {
            std::this_thread::yield(); // time for an end that does not wait
            end->SendEvent(L"answer", L"");
        }
    });
    end->AddEventHandler(L"e", &handler);
    ending->FrontEndCalled(L"")->SendEvent(L"e", L"");
    started.get_future().wait();
    lineEnds.set_value();
    ending.reset();
    EXPECT_EQ(handler.WaitFor(1).size(), 1U);
}

TEST_F(LineThreadsTest, HandlersComeAndGoWhileEventsArrive) {
    std::jthread sender([this](const std::stop_token& stop) {
        while (!stop.stop_requested()) {
            frontEnd->SendEvent(L"e", L"");
            std::this_thread::yield();
        }
    });
    for (int round = 0; round < 200; ++round) {
        EventRecorder handler;
        engine->AddEventHandler(L"e", &handler);
        handler.WaitFor(1);
        engine->AddEventHandler(L"e", nullptr);
    }
}

} // namespace
