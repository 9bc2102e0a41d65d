#include "transport/event_delivery/DeliveryThread.h"

#include <chrono>
#include <future>
#include <memory>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace {

using event_delivery::DeliveryThread;

using namespace std::chrono_literals;

void WaitUntilIdle(DeliveryThread& thread) {
    const auto reached = std::make_shared<std::promise<void>>();
    thread.Post([reached] { reached->set_value(); });
    reached->get_future().wait();
}

TEST(DeliveryThreadTest, WorkIsDoneInOrderOnOneOtherThread) {
    std::vector<int> done;
    std::vector<std::thread::id> threads;
    DeliveryThread thread;
    for (int number = 0; number < 1000; ++number) {
        thread.Post([&, number] {
            done.push_back(number);
            threads.push_back(std::this_thread::get_id());
        });
    }
    WaitUntilIdle(thread);
    ASSERT_EQ(done.size(), 1000u);
    for (std::size_t index = 0; index < done.size(); ++index) {
        EXPECT_EQ(done[index], static_cast<int>(index));
        EXPECT_EQ(threads[index], threads[0]);
    }
    EXPECT_NE(threads[0], std::this_thread::get_id());
}

TEST(DeliveryThreadTest, StoppingDropsWhatIsQueued) {
    DeliveryThread thread;
    std::promise<void> started;
    std::promise<void> released;
    bool isDone = false;
    thread.Post([&] {
        started.set_value();
        released.get_future().wait();
    });
    thread.Post([&isDone] { isDone = true; });
    started.get_future().wait();
    EXPECT_FALSE(thread.Stop(0ms));
    released.set_value();
    EXPECT_TRUE(thread.Stop(24h));
    thread.Post([&isDone] { isDone = true; });
    EXPECT_FALSE(isDone);
}

TEST(DeliveryThreadTest, StoppingTwiceIsStopping) {
    DeliveryThread thread;
    EXPECT_TRUE(thread.Stop(24h));
    EXPECT_TRUE(thread.Stop(24h));
}

TEST(DeliveryThreadTest, WorkThatStopsItsOwnThreadDoesNotWait) {
    std::promise<bool> stopped;
    DeliveryThread thread;
    thread.Post([&] { stopped.set_value(thread.Stop(24h)); });
    EXPECT_FALSE(stopped.get_future().get());
}

TEST(DeliveryThreadTest, WhatTheWorkHoldsIsGivenBack) {
    const auto held = std::make_shared<int>(1);
    {
        DeliveryThread thread;
        thread.Post([held] {});
        WaitUntilIdle(thread);
        EXPECT_EQ(held.use_count(), 1);
    }
}

} // namespace
