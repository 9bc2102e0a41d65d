#include "transport/in_process/Bus.h"

#include "kit/doubles/RecordingHandler.h"

#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Payloads = std::vector<std::wstring>;

/// Handlers are constructed before the line, so they outlive its threads.
class LineTest : public testing::Test {
protected:
    in_process::Endpoint* Engine() { return line.GetServer(); }
    in_process::Endpoint* FrontEnd(const std::wstring& name = L"") { return line.GetClient(name); }

    RecordingHandler first;
    RecordingHandler second;
    in_process::Bus line;
};

TEST_F(LineTest, AnEventOfAFrontEndReachesTheEnginesHandlerOfThatName) {
    Engine()->AddEventHandler(L"EnqueueJobs", &first);
    Engine()->AddEventHandler(L"CancelJobs", &second);
    EXPECT_TRUE(FrontEnd()->SendEvent(L"EnqueueJobs", L"one"));
    EXPECT_TRUE(FrontEnd()->SendEvent(L"CancelJobs", L"two"));
    EXPECT_EQ(first.handled.WaitFor(1), Payloads{L"one"});
    EXPECT_EQ(second.handled.WaitFor(1), Payloads{L"two"});
}

TEST_F(LineTest, EventsArriveInTheOrderOfSending) {
    Engine()->AddEventHandler(L"e", &first);
    Payloads expected;
    for (int number = 0; number < 1000; ++number) {
        expected.push_back(std::to_wstring(number));
        FrontEnd()->SendEvent(L"e", expected.back());
    }
    EXPECT_EQ(first.handled.WaitFor(expected.size()), expected);
}

TEST_F(LineTest, AnEventOfTheEngineReachesEveryFrontEnd) {
    FrontEnd()->AddEventHandler(L"UpdateProgress", &first);
    FrontEnd(L"2")->AddEventHandler(L"UpdateProgress", &second);
    EXPECT_TRUE(Engine()->SendEvent(L"UpdateProgress", L"50"));
    EXPECT_EQ(first.handled.WaitFor(1), Payloads{L"50"});
    EXPECT_EQ(second.handled.WaitFor(1), Payloads{L"50"});
}

TEST_F(LineTest, AnEventToNobodyIsHandedOn) {
    EXPECT_TRUE(Engine()->SendEvent(L"UpdateProgress", L""));
}

TEST_F(LineTest, AnEventWithoutAHandlerIsHandedOnAndDropped) {
    Engine()->AddEventHandler(L"known", &first);
    EXPECT_TRUE(FrontEnd()->SendEvent(L"unknown", L"dropped"));
    EXPECT_TRUE(FrontEnd()->SendEvent(L"known", L"kept"));
    EXPECT_EQ(first.handled.WaitFor(1), Payloads{L"kept"});
}

TEST_F(LineTest, WithoutAnEngineThereIsNoConnection) {
    EXPECT_FALSE(FrontEnd()->IsConnected());
    EXPECT_FALSE(FrontEnd()->SendEvent(L"e", L""));
    EXPECT_TRUE(Engine()->IsConnected());
    EXPECT_TRUE(FrontEnd()->IsConnected());
    EXPECT_TRUE(FrontEnd()->PostEvent(L"e", L""));
}

TEST_F(LineTest, AnAnswerReachesWhoAskedAlone) {
    FrontEnd()->AddEventHandler(L"answer", &first);
    FrontEnd(L"2")->AddEventHandler(L"answer", &second);
    RecordingHandler answering(
        [this](const std::wstring& payload) { Engine()->SendEventTo(Engine()->CurrentPeer(), L"answer", payload); });
    Engine()->AddEventHandler(L"question", &answering);
    FrontEnd()->SendEvent(L"question", L"from the first");
    FrontEnd(L"2")->SendEvent(L"question", L"from the second");
    EXPECT_EQ(first.handled.WaitFor(1), Payloads{L"from the first"});
    EXPECT_EQ(second.handled.WaitFor(1), Payloads{L"from the second"});
    Engine()->AddEventHandler(L"question", nullptr);
}

TEST_F(LineTest, OutsideAHandlerThereIsNoPeer) {
    EXPECT_EQ(Engine()->CurrentPeer(), 0U);
    in_process::Bus::Peer onAnotherThread = 1;
    RecordingHandler asking([&](const std::wstring&) { onAnotherThread = FrontEnd()->CurrentPeer(); });
    Engine()->AddEventHandler(L"e", &asking);
    FrontEnd()->SendEvent(L"e", L"");
    asking.handled.WaitFor(1);
    EXPECT_EQ(onAnotherThread, 0U);
    Engine()->AddEventHandler(L"e", nullptr);
}

TEST_F(LineTest, APeerThatIsNoFrontEndGetsNothing) {
    FrontEnd();
    EXPECT_FALSE(Engine()->SendEventTo(0, L"e", L""));
    EXPECT_FALSE(Engine()->SendEventTo(line.ServerNumber(), L"e", L""));
}

TEST_F(LineTest, AFrontEndsOnlyPeerIsTheEngine) {
    EXPECT_FALSE(FrontEnd()->SendEventTo(line.ServerNumber(), L"e", L""));
    Engine()->AddEventHandler(L"e", &first);
    EXPECT_TRUE(FrontEnd()->SendEventTo(line.ServerNumber(), L"e", L"to the engine"));
    EXPECT_FALSE(FrontEnd()->SendEventTo(line.ServerNumber() + 1000, L"e", L""));
    EXPECT_EQ(first.handled.WaitFor(1), Payloads{L"to the engine"});
}

TEST_F(LineTest, ALaterHandlerTakesThePlaceOfTheEarlierOne) {
    Engine()->AddEventHandler(L"e", &first);
    FrontEnd()->SendEvent(L"e", L"one");
    first.handled.WaitFor(1);
    Engine()->AddEventHandler(L"e", &second);
    FrontEnd()->SendEvent(L"e", L"two");
    EXPECT_EQ(second.handled.WaitFor(1), Payloads{L"two"});
    EXPECT_EQ(first.handled.WaitFor(1), Payloads{L"one"});
}

TEST_F(LineTest, AHandlerThatThrowsHoldsUpNobody) {
    RecordingHandler throwing([](const std::wstring&) { throw std::runtime_error("refused"); });
    Engine()->AddEventHandler(L"throwing", &throwing);
    Engine()->AddEventHandler(L"e", &first);
    FrontEnd()->SendEvent(L"throwing", L"");
    FrontEnd()->SendEvent(L"e", L"next");
    EXPECT_EQ(first.handled.WaitFor(1), Payloads{L"next"});
    Engine()->AddEventHandler(L"throwing", nullptr);
}

TEST_F(LineTest, AnEndIsMadeOnce) {
    EXPECT_EQ(Engine(), Engine());
    EXPECT_EQ(FrontEnd(), FrontEnd());
    EXPECT_NE(FrontEnd(), FrontEnd(L"2"));
}

} // namespace
