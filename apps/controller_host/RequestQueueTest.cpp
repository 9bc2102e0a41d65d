#include "controller_host/RequestQueue.h"

#include "kit/doubles/LineDouble.h"
#include "platform/processes/Waiting.h"

#include <future>
#include <memory>

#include <gtest/gtest.h>

namespace {

using std::chrono::milliseconds;

class RequestQueueTest : public testing::Test {
protected:
    LineDouble line;
    EngineTransmitter transmitter{line, &line};
};

TEST_F(RequestQueueTest, KeepsRequestsInOrderWithTheirSenders) {
    RequestQueue queue(transmitter, {L"First", L"Second"});
    EXPECT_FALSE(platform::WaitForAny({queue.Readable()}, milliseconds(0)));
    EXPECT_TRUE(line.Deliver(4, L"Second", L"b"));
    EXPECT_TRUE(line.Deliver(5, L"First", L"a"));
    EXPECT_TRUE(platform::WaitForAny({queue.Readable()}, milliseconds(0)));
    const std::deque<Request> requests = queue.TakeAll();
    ASSERT_EQ(requests.size(), 2U);
    EXPECT_EQ(requests[0].peer, 4U);
    EXPECT_EQ(requests[0].name, L"Second");
    EXPECT_EQ(requests[1].payload, L"a");
    EXPECT_FALSE(platform::WaitForAny({queue.Readable()}, milliseconds(0)));
}

TEST_F(RequestQueueTest, TakesNothingThatWasNotNamed) {
    const RequestQueue queue(transmitter, {L"First"});
    EXPECT_FALSE(line.Deliver(1, L"Third", L""));
}

TEST_F(RequestQueueTest, EachRequestHasAnAcknowledgementOfItsOwn) {
    RequestQueue queue(transmitter, {L"First"});
    EXPECT_TRUE(line.Deliver(4, L"First", L""));
    EXPECT_TRUE(line.Deliver(4, L"First", L""));
    const std::deque<Request> requests = queue.TakeAll();
    ASSERT_EQ(requests.size(), 2U);
    EXPECT_NE(requests[0].acknowledgement, 0U);
    EXPECT_NE(requests[0].acknowledgement, requests[1].acknowledgement);
}

/// Delivers one more request to the full queue. It is not lost: it waits for space on the transmitter's thread.
void DeliverBeyond(LineDouble& line, RequestQueue& queue, std::size_t waiting, const std::wstring& payload) {
    std::future<bool> beyond = std::async(std::launch::async, [&] { return line.Deliver(1, L"First", payload); });
    EXPECT_EQ(beyond.wait_for(milliseconds(1)), std::future_status::timeout);
    EXPECT_EQ(queue.TakeAll().size(), waiting);
    EXPECT_TRUE(beyond.get());
    EXPECT_EQ(queue.TakeAll().size(), 1U);
}

TEST_F(RequestQueueTest, AFloodWaitsForRoom) {
    RequestQueue queue(transmitter, {L"First"});
    for (std::size_t count = 0; count < RequestQueue::requestLimit; ++count) {
        ASSERT_TRUE(line.Deliver(1, L"First", L""));
    }
    DeliverBeyond(line, queue, RequestQueue::requestLimit, L"");
}

TEST_F(RequestQueueTest, MoreThanMemoryIsMeantForWaitsForRoom) {
    RequestQueue queue(transmitter, {L"First"});
    const std::wstring large(RequestQueue::characterLimit + 1, L'x');
    EXPECT_TRUE(line.Deliver(1, L"First", large));
    DeliverBeyond(line, queue, 1, L"x");
    const std::wstring half(RequestQueue::characterLimit / 2, L'x');
    EXPECT_TRUE(line.Deliver(1, L"First", half));
    EXPECT_TRUE(line.Deliver(1, L"First", half));
    DeliverBeyond(line, queue, 2, L"x");
}

TEST_F(RequestQueueTest, WhatWaitsForRoomIsRefusedAtTheEnd) {
    auto queue = std::make_unique<RequestQueue>(transmitter, std::vector<std::wstring>{L"First"});
    EXPECT_TRUE(line.Deliver(1, L"First", std::wstring(RequestQueue::characterLimit, L'x')));
    std::future<bool> beyond = std::async(std::launch::async, [&] { return line.Deliver(1, L"First", L"x"); });
    EXPECT_EQ(beyond.wait_for(milliseconds(1)), std::future_status::timeout);
    queue.reset();
    EXPECT_FALSE(beyond.get());
}

TEST_F(RequestQueueTest, TakesItsHandlersAway) {
    { const RequestQueue queue(transmitter, {L"First"}); }
    EXPECT_FALSE(line.HasHandlers());
}

} // namespace
