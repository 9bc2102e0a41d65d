#include "transport/event_delivery/HandlerTable.h"

#include "kit/doubles/RecordingHandler.h"

#include <future>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace {

using event_delivery::HandlerTable;

using Payloads = std::vector<std::wstring>;

TEST(HandlerTableTest, AnEventGoesToTheHandlerOfItsName) {
    HandlerTable table;
    RecordingHandler a;
    RecordingHandler b;
    table.Set(L"A", &a);
    table.Set(L"B", &b);
    table.Deliver(1, L"B", L"x");
    table.Deliver(1, L"C", L"y");
    EXPECT_EQ(a.payloads.All(), Payloads{});
    EXPECT_EQ(b.payloads.All(), Payloads{L"x"});
}

TEST(HandlerTableTest, ALaterHandlerTakesThePlaceOfTheEarlier) {
    HandlerTable table;
    RecordingHandler earlier;
    RecordingHandler later;
    table.Set(L"A", &earlier);
    table.Set(L"A", &later);
    table.Deliver(1, L"A", L"x");
    EXPECT_EQ(earlier.payloads.All(), Payloads{});
    EXPECT_EQ(later.payloads.All(), Payloads{L"x"});
}

TEST(HandlerTableTest, NullTakesTheHandlerAway) {
    HandlerTable table;
    RecordingHandler handler;
    table.Set(L"A", &handler);
    table.Set(L"A", nullptr);
    table.Set(L"B", nullptr);
    table.Deliver(1, L"A", L"x");
    EXPECT_EQ(handler.payloads.All(), Payloads{});
}

TEST(HandlerTableTest, TheSenderIsKnownWhileAHandlerRunsAndOnItsThreadAlone) {
    HandlerTable table;
    std::vector<HandlerTable::Peer> seen;
    RecordingHandler handler([&](const std::wstring&) {
        seen.push_back(table.CurrentPeer());
        seen.push_back(std::async(std::launch::async, [&] { return table.CurrentPeer(); }).get());
    });
    table.Set(L"A", &handler);
    table.Deliver(42, L"A", L"");
    EXPECT_EQ(seen, (std::vector<HandlerTable::Peer>{42, 0}));
    EXPECT_EQ(table.CurrentPeer(), 0u);
}

TEST(HandlerTableTest, AFailingHandlerIsOverToo) {
    HandlerTable table;
    RecordingHandler handler([](const std::wstring&) { throw std::runtime_error("no"); });
    table.Set(L"A", &handler);
    EXPECT_THROW(table.Deliver(1, L"A", L""), std::runtime_error);
    EXPECT_EQ(table.CurrentPeer(), 0u);
    table.Set(L"A", nullptr);
}

TEST(HandlerTableTest, AHandlerMayTakeItselfAway) {
    HandlerTable table;
    RecordingHandler handler([&](const std::wstring&) { table.Set(L"A", nullptr); });
    table.Set(L"A", &handler);
    table.Deliver(1, L"A", L"x");
    table.Deliver(1, L"A", L"y");
    EXPECT_EQ(handler.payloads.All(), Payloads{L"x"});
}

/// A handler that runs on its own thread until the test releases it.
class HeldHandler {
public:
    explicit HeldHandler(HandlerTable& table) : handler([this](const std::wstring&) { Hold(); }) {
        table.Set(L"A", &handler);
        delivering = std::thread([&table] { table.Deliver(1, L"A", L"x"); });
        started.get_future().wait();
    }
    ~HeldHandler() { delivering.join(); }

    void Release() { released.set_value(); }
    bool IsOver() const { return isOver; }

private:
    void Hold() {
        started.set_value();
        released.get_future().wait();
        isOver = true;
    }

    RecordingHandler handler;
    std::promise<void> started;
    std::promise<void> released;
    bool isOver = false;
    std::thread delivering;
};

/// Checks that a change of the table waits for a running handler: the handler has ended when the change returns.
/// Another thread releases the handler, and may begin when the change already waits.
void ChangeWaits(CallbackFunctor* replacement) {
    HandlerTable table;
    HeldHandler held(table);
    std::thread releasing([&held] { held.Release(); });
    table.Set(L"A", replacement);
    EXPECT_TRUE(held.IsOver());
    releasing.join();
}

TEST(HandlerTableTest, TakingAwayWaitsForTheHandlerThatRuns) {
    ChangeWaits(nullptr);
}

TEST(HandlerTableTest, ReplacingWaitsForTheHandlerThatRuns) {
    RecordingHandler replacement;
    ChangeWaits(&replacement);
}

TEST(HandlerTableTest, ChangingAnotherEventWaitsForNobody) {
    HandlerTable table;
    RecordingHandler other;
    HeldHandler held(table);
    table.Set(L"B", &other);
    table.Set(L"B", nullptr);
    EXPECT_FALSE(held.IsOver());
    held.Release();
}

} // namespace
