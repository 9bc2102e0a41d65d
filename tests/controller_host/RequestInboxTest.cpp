#include "controller_host/RequestInbox.h"

#include "controller_host/LineDouble.h"
#include "platform/Waiting.h"

#include <gtest/gtest.h>

namespace {

using std::chrono::milliseconds;

TEST(RequestInboxTest, KeepsRequestsInOrderWithTheirSenders) {
    LineDouble line;
    RequestInbox inbox(line, {L"First", L"Second"});
    EXPECT_FALSE(platform::WaitForAny({inbox.Arrived()}, milliseconds(0)));
    line.Deliver(4, L"Second", L"b");
    line.Deliver(5, L"First", L"a");
    EXPECT_TRUE(platform::WaitForAny({inbox.Arrived()}, milliseconds(0)));
    const std::deque<Request> requests = inbox.TakeAll();
    ASSERT_EQ(requests.size(), 2U);
    EXPECT_EQ(requests[0].peer, 4U);
    EXPECT_EQ(requests[0].name, L"Second");
    EXPECT_EQ(requests[1].payload, L"a");
    EXPECT_FALSE(platform::WaitForAny({inbox.Arrived()}, milliseconds(0)));
}

TEST(RequestInboxTest, TakesNothingThatWasNotNamed) {
    LineDouble line;
    const RequestInbox inbox(line, {L"First"});
    EXPECT_FALSE(line.Deliver(1, L"Third", L""));
}

TEST(RequestInboxTest, RefusesAFlood) {
    LineDouble line;
    RequestInbox inbox(line, {L"First"});
    for (int count = 0; count < 10000; ++count) {
        ASSERT_TRUE(line.Deliver(1, L"First", L""));
    }
    EXPECT_FALSE(line.Deliver(1, L"First", L""));
    inbox.TakeAll();
    EXPECT_TRUE(line.Deliver(1, L"First", L""));
}

TEST(RequestInboxTest, RefusesMoreThanMemoryIsMeantFor) {
    LineDouble line;
    RequestInbox inbox(line, {L"First"});
    const std::wstring large(RequestInbox::characterLimit + 1, L'x');
    EXPECT_TRUE(line.Deliver(1, L"First", large));
    EXPECT_FALSE(line.Deliver(1, L"First", L"x"));
    EXPECT_EQ(inbox.TakeAll().size(), 1U);
    const std::wstring half(RequestInbox::characterLimit / 2, L'x');
    EXPECT_TRUE(line.Deliver(1, L"First", half));
    EXPECT_TRUE(line.Deliver(1, L"First", half));
    EXPECT_FALSE(line.Deliver(1, L"First", L"x"));
}

TEST(RequestInboxTest, TakesItsHandlersAway) {
    LineDouble line;
    { const RequestInbox inbox(line, {L"First"}); }
    EXPECT_FALSE(line.HasHandlers());
}

} // namespace
