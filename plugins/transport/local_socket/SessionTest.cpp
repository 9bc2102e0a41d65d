#include "transport/local_socket/Session.h"

#include <chrono>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "kit/local_socket/FakeNetwork.h"

namespace {

using local_socket::EncodeAcknowledgement;
using local_socket::EncodeBusy;
using local_socket::EncodeEvent;
using local_socket::EncodeHandshake;
using local_socket::Frame;
using local_socket::Limits;
using local_socket::Outcome;
using local_socket::Sending;
using local_socket::Session;
using local_socket::SharedFrame;

using namespace std::chrono_literals;
using namespace std::string_literals;

Limits SmallLimits() {
    Limits limits;
    limits.handshake = 5s;
    limits.stall = 3s;
    limits.acknowledgement = 20s;
    limits.outgoingBytes = 2000;
    limits.undeliveredBytes = 1000;
    return limits;
}

std::string Event(const std::wstring& name, const std::wstring& payload = L"") {
    return *EncodeEvent(name, payload);
}

SharedFrame Shared(const std::string& frame) {
    return std::make_shared<const std::string>(frame);
}

/// One session; the test is its owner and its peer.
class SessionTest : public testing::Test, public local_socket::SessionObserver {
protected:
    void TearDown() override {
        if (session) {
            session->Close(L"");
        }
    }

    void Begin(Session::Role role) {
        session = std::make_shared<Session>(7, role, network, FakeNetwork::ChannelTo(peer), SmallLimits(), *this);
        session->Start();
    }

    void BeginOpenEngine() {
        Begin(Session::Role::Server);
        peer.Receive(EncodeHandshake());
        peer.written.clear();
    }

    void BeginOpenFront() {
        Begin(Session::Role::Client);
        peer.Receive(EncodeHandshake());
        peer.written.clear();
        happened.clear();
    }

    Sending SendAwaited(local_socket::EventNumber number) {
        return session->SendAwaited(Shared(*EncodeEvent(L"A", L"", number)), number, [this, number](Outcome outcome) {
            static const std::wstring names[] = {L"acknowledged", L"peer gone", L"timed out"};
            happened.push_back(std::to_wstring(number) + L" " + names[static_cast<std::size_t>(outcome)]);
        });
    }

    void OnHandshake(Session&) override { happened.emplace_back(L"greeted"); }
    void OnEvent(Session&, Frame event) override {
        happened.push_back(L"event " + std::wstring(event.name.begin(), event.name.end()));
        unhandled.push_back(std::move(event));
    }
    void OnClosed(Session&, const std::wstring& reason) override { happened.push_back(L"closed: " + reason); }

    using Happened = std::vector<std::wstring>;
    FakeNetwork network;
    FakeConnection peer;
    std::shared_ptr<Session> session;
    Happened happened;
    std::vector<Frame> unhandled;
};

TEST_F(SessionTest, AFrontEndGreetsFirst) {
    Begin(Session::Role::Client);
    EXPECT_EQ(peer.written, EncodeHandshake());
    EXPECT_FALSE(session->IsOpen());
    peer.Receive(EncodeHandshake());
    EXPECT_TRUE(session->IsOpen());
    EXPECT_EQ(happened, Happened{L"greeted"});
}

TEST_F(SessionTest, AnEngineAnswersTheGreeting) {
    Begin(Session::Role::Server);
    EXPECT_EQ(peer.written, "");
    peer.Receive(EncodeHandshake());
    EXPECT_EQ(peer.written, EncodeHandshake());
    EXPECT_TRUE(session->IsOpen());
}

TEST_F(SessionTest, EventsComeInOrderAlsoWithTheGreeting) {
    Begin(Session::Role::Server);
    peer.Receive(EncodeHandshake() + Event(L"A") + Event(L"B"));
    peer.Receive(Event(L"C"));
    EXPECT_EQ(happened, (Happened{L"greeted", L"event A", L"event B", L"event C"}));
}

TEST_F(SessionTest, OneThatFinishesWritesWhatWasQueuedAndTakesNothingMore) {
    BeginOpenEngine();
    peer.takesWrites = false;
    EXPECT_EQ(session->Send(Shared(Event(L"A"))), Sending::Queued);
    session->Finish();
    EXPECT_EQ(session->Send(Shared(Event(L"B"))), Sending::PeerGone);
    peer.Receive(Event(L"C"));
    EXPECT_FALSE(peer.isClosed);
    peer.TakeWrite();
    EXPECT_EQ(peer.written, Event(L"A"));
    EXPECT_TRUE(peer.isClosed);
    EXPECT_EQ(happened, (Happened{L"greeted", L"closed: "}));
}

TEST_F(SessionTest, OneThatHasNothingToSendIsFinishedAtOnce) {
    BeginOpenEngine();
    session->Finish();
    EXPECT_TRUE(peer.isClosed);
}

TEST_F(SessionTest, AFrontEndWithoutRoomIsToldAndClosed) {
    session = std::make_shared<Session>(7, Session::Role::Server, network, FakeNetwork::ChannelTo(peer), SmallLimits(),
                                        *this);
    session->TurnAway(256);
    EXPECT_EQ(peer.written, EncodeBusy(256));
    EXPECT_TRUE(peer.isClosed);
    EXPECT_FALSE(session->WasTurnedAway());
    EXPECT_EQ(happened, Happened{L"closed: "});
}

TEST_F(SessionTest, AFrontEndThatIsTurnedAwayLearnsWhyAndWhatToDo) {
    Begin(Session::Role::Client);
    peer.Receive(EncodeBusy(256));
    EXPECT_TRUE(session->WasTurnedAway());
    EXPECT_TRUE(peer.isClosed);
    EXPECT_EQ(happened, Happened{L"closed: it is busy: 256 front ends are connected, as many as it serves at a time; "
                                 L"end some of them, or try again later"});
    Begin(Session::Role::Client);
    peer.Receive(EncodeBusy(0));
    EXPECT_TRUE(session->WasTurnedAway());
    EXPECT_EQ(happened.back(), L"closed: it is busy: the system gives it no more open files; end some front ends, or "
                               L"start it again with a higher limit of open files");
}

TEST_F(SessionTest, OnlyAnEngineIsBusyAndOnlyBeforeItsGreeting) {
    Begin(Session::Role::Server);
    peer.Receive(EncodeBusy(1));
    EXPECT_EQ(happened, Happened{L"closed: it sent an event before its greeting"});
    BeginOpenFront();
    peer.Receive(EncodeBusy(1));
    EXPECT_EQ(happened, Happened{L"closed: it greeted twice"});
    EXPECT_FALSE(session->WasTurnedAway());
}

TEST_F(SessionTest, APeerThatSendsNothingIsClosed) {
    Begin(Session::Role::Server);
    network.Advance(4999ms);
    EXPECT_FALSE(peer.isClosed);
    network.Advance(1ms);
    EXPECT_TRUE(peer.isClosed);
    EXPECT_EQ(happened, Happened{L"closed: it does not answer: no greeting within 5000 ms"});
}

TEST_F(SessionTest, BytesOfAGreetingDoNotMakeItsTimeLonger) {
    Begin(Session::Role::Server);
    network.Advance(3s);
    peer.Receive(EncodeHandshake().substr(0, 15));
    network.Advance(2s);
    EXPECT_EQ(happened, Happened{L"closed: it does not answer: no greeting within 5000 ms"});
}

TEST_F(SessionTest, AnOpenSessionMayBeSilent) {
    BeginOpenEngine();
    network.Advance(24h);
    EXPECT_TRUE(session->IsOpen());
}

TEST_F(SessionTest, AFrameThatStopsInTheMiddleIsClosed) {
    BeginOpenEngine();
    const std::string event = Event(L"A", L"0123456789");
    peer.Receive(event.substr(0, 10));
    network.Advance(2999ms);
    peer.Receive(event.substr(10, 10));
    network.Advance(2999ms);
    EXPECT_TRUE(session->IsOpen());
    network.Advance(1ms);
    EXPECT_EQ(happened, (Happened{L"greeted", L"closed: it stopped in the middle of an event for 3000 ms"}));
}

TEST_F(SessionTest, AFrameThatIsCompletedInTimeIsTaken) {
    BeginOpenEngine();
    const std::string event = Event(L"A", L"0123456789");
    peer.Receive(event.substr(0, 10));
    network.Advance(2s);
    peer.Receive(event.substr(10));
    network.Advance(24h);
    EXPECT_EQ(happened, (Happened{L"greeted", L"event A"}));
}

TEST_F(SessionTest, APeerThatJustGoesLeavesNoReason) {
    BeginOpenEngine();
    peer.ReceiveEnd();
    EXPECT_EQ(happened, (Happened{L"greeted", L"closed: "}));
}

TEST_F(SessionTest, APeerThatGoesInTheMiddleOfAnEventIsTold) {
    BeginOpenEngine();
    peer.Receive(Event(L"A").substr(0, 10));
    peer.ReceiveEnd();
    EXPECT_EQ(happened, (Happened{L"greeted", L"closed: it went in the middle of an event"}));
}

TEST_F(SessionTest, GarbageIsClosed) {
    Begin(Session::Role::Server);
    peer.Receive("GET / HTTP/1.1\r\n\r\n");
    EXPECT_TRUE(peer.isClosed);
    EXPECT_EQ(peer.written, "");
    EXPECT_EQ(happened, Happened{L"closed: it sent something that is no event"});
}

TEST_F(SessionTest, AFrontEndOfAnotherVersionIsToldTheEnginesBeforeItIsClosed) {
    Begin(Session::Role::Server);
    peer.Receive("CCev\1\0\1\0\0\0\0\0\0\0\0\0"s);
    EXPECT_EQ(peer.written, EncodeHandshake());
    EXPECT_EQ(happened, Happened{L"closed: it speaks version 1 of the protocol, this program version 2; use programs "
                                 L"of the same release"});
}

TEST_F(SessionTest, AnEventBeforeTheGreetingIsClosed) {
    Begin(Session::Role::Server);
    peer.Receive(Event(L"A"));
    EXPECT_EQ(happened, Happened{L"closed: it sent an event before its greeting"});
}

TEST_F(SessionTest, ASecondGreetingIsClosedAndNothingBehindItIsTaken) {
    BeginOpenEngine();
    peer.Receive(EncodeHandshake() + Event(L"A"));
    EXPECT_EQ(happened, (Happened{L"greeted", L"closed: it greeted twice"}));
}

TEST_F(SessionTest, FramesGoOutWholeAndInOrder) {
    BeginOpenEngine();
    EXPECT_EQ(session->Send(Shared(Event(L"A", L"1"))), Sending::Queued);
    EXPECT_EQ(session->Send(Shared(Event(L"B", std::wstring(200000, L'b')))), Sending::Queued);
    EXPECT_EQ(session->Send(Shared(Event(L"C"))), Sending::Queued);
    EXPECT_EQ(peer.written, Event(L"A", L"1") + Event(L"B", std::wstring(200000, L'b')) + Event(L"C"));
}

TEST_F(SessionTest, TheQueueOfAPeerThatTakesNothingIsBounded) {
    BeginOpenEngine();
    peer.takesWrites = false;
    EXPECT_EQ(session->Send(Shared(Event(L"A", std::wstring(500, L'a')))), Sending::Queued);
    EXPECT_EQ(session->Send(Shared(Event(L"B", std::wstring(500, L'b')))), Sending::Queued);
    EXPECT_EQ(session->Send(Shared(Event(L"C", std::wstring(500, L'c')))), Sending::QueueFull);
    EXPECT_TRUE(session->IsOpen());
}

TEST_F(SessionTest, SmallFramesFillTheQueueToo) {
    BeginOpenEngine();
    peer.takesWrites = false;
    int queued = 0;
    while (queued < 100 && session->Send(Shared(Event(L"A"))) == Sending::Queued) {
        ++queued;
    }
    EXPECT_EQ(queued, 7);
}

TEST_F(SessionTest, OneFrameOverTheLimitIsSentWhenNothingElseWaits) {
    BeginOpenEngine();
    EXPECT_EQ(session->Send(Shared(Event(L"A", std::wstring(5000, L'a')))), Sending::Queued);
    EXPECT_EQ(peer.written, Event(L"A", std::wstring(5000, L'a')));
}

TEST_F(SessionTest, WhatAPeerSentBeforeItWentIsReadAfterAFailedWrite) {
    BeginOpenEngine();
    peer.failsWrites = true;
    session->Send(Shared(Event(L"A")));
    EXPECT_EQ(session->Send(Shared(Event(L"B"))), Sending::PeerGone);
    peer.Receive(Event(L"Last"));
    peer.ReceiveEnd();
    EXPECT_EQ(happened, (Happened{L"greeted", L"event Last", L"closed: "}));
}

TEST_F(SessionTest, NothingIsReadWhileTooMuchIsUnhandled) {
    BeginOpenEngine();
    peer.Receive(Event(L"A", std::wstring(900, L'a')));
    EXPECT_FALSE(peer.IsReading());
    network.Advance(24h);
    EXPECT_TRUE(session->IsOpen());
    session->EventHandled(unhandled.at(0));
    EXPECT_TRUE(peer.IsReading());
}

TEST_F(SessionTest, TheTimeForTheRestOfAFrameBeginsWhenReadingGoesOn) {
    BeginOpenEngine();
    peer.Receive(Event(L"A", std::wstring(900, L'a')) + Event(L"B").substr(0, 10));
    network.Advance(24h);
    EXPECT_TRUE(session->IsOpen());
    session->EventHandled(unhandled.at(0));
    network.Advance(3s);
    EXPECT_TRUE(session->IsClosed());
}

TEST_F(SessionTest, AnEventIsAcknowledgedByItsNumber) {
    BeginOpenFront();
    EXPECT_EQ(SendAwaited(1), Sending::Queued);
    EXPECT_EQ(SendAwaited(2), Sending::Queued);
    EXPECT_EQ(peer.written, *EncodeEvent(L"A", L"", 1) + *EncodeEvent(L"A", L"", 2));
    peer.Receive(EncodeAcknowledgement(2));
    EXPECT_EQ(happened, Happened{L"2 acknowledged"});
    peer.Receive(EncodeAcknowledgement(1));
    EXPECT_EQ(happened, (Happened{L"2 acknowledged", L"1 acknowledged"}));
    network.Advance(24h);
    EXPECT_EQ(happened.size(), 2u);
}

TEST_F(SessionTest, AnAnswerComesBeforeItsAcknowledgement) {
    BeginOpenFront();
    SendAwaited(1);
    peer.Receive(Event(L"Answer") + EncodeAcknowledgement(1));
    EXPECT_EQ(happened, (Happened{L"event Answer", L"1 acknowledged"}));
}

TEST_F(SessionTest, AnEngineThatDoesNotAcknowledgeIsWaitedForSoLongAndStaysConnected) {
    BeginOpenFront();
    SendAwaited(1);
    network.Advance(15s);
    SendAwaited(2);
    network.Advance(4999ms);
    EXPECT_EQ(happened, Happened{});
    network.Advance(1ms);
    EXPECT_EQ(happened, Happened{L"1 timed out"});
    peer.Receive(EncodeAcknowledgement(1) + EncodeAcknowledgement(2));
    EXPECT_EQ(happened, (Happened{L"1 timed out", L"2 acknowledged"}));
    EXPECT_TRUE(session->IsOpen());
}

TEST_F(SessionTest, AnEngineThatGoesHasAcknowledgedNothingMore) {
    BeginOpenFront();
    SendAwaited(1);
    SendAwaited(2);
    peer.ReceiveEnd();
    EXPECT_EQ(happened, (Happened{L"1 peer gone", L"2 peer gone", L"closed: "}));
    EXPECT_EQ(SendAwaited(3), Sending::PeerGone);
    network.Advance(24h);
    EXPECT_EQ(happened.size(), 3u);
}

TEST_F(SessionTest, AFrontEndThatAcknowledgesIsClosed) {
    BeginOpenEngine();
    peer.Receive(EncodeAcknowledgement(1));
    EXPECT_EQ(happened, (Happened{L"greeted", L"closed: it acknowledged an event, which only an engine does"}));
}

TEST_F(SessionTest, AClosedSessionSendsAndTellsNothing) {
    BeginOpenEngine();
    session->Close(L"enough");
    session->Close(L"again");
    network.Advance(24h);
    EXPECT_EQ(session->Send(Shared(Event(L"A"))), Sending::PeerGone);
    EXPECT_EQ(peer.written, "");
    EXPECT_EQ(happened, (Happened{L"greeted", L"closed: enough"}));
}

} // namespace
