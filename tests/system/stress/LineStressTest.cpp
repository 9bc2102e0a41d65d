#include "kit/Deadline.h"
#include "system/stress/NumberedEvents.h"
#include "system/stress/OperationCounts.h"
#include "system/stress/Rounds.h"
#include "system/stress/ThreadTeam.h"
#include "transport/in_process/Bus.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace {

constexpr std::uint32_t frontEndCount = 4;
constexpr std::uint32_t eventsEach = 250;

std::wstring Name(const wchar_t* kind, std::uint32_t number) {
    return kind + std::to_wstring(number);
}

/// Returns each payload to its sender.
class Echo final : public CallbackFunctor {
public:
    Echo(in_process::Endpoint& ownEnd, StreamCheck& streamCheck) : end(ownEnd), check(streamCheck) {}

    bool operator()(const std::wstring& payload) override {
        check.Take(payload);
        return end.SendEventTo(end.CurrentPeer(), L"echo", payload);
    }

private:
    in_process::Endpoint& end;
    StreamCheck& check;
};

/// One line with its engine and front ends, for one round.
class LineRound {
public:
    explicit LineRound(OperationCounts& operationCounts);
    ~LineRound();
    LineRound(const LineRound&) = delete;
    LineRound& operator=(const LineRound&) = delete;

    /// Sends from all ends at once while handlers change and front ends connect.
    void Run();
    /// Waits until everything sent has arrived, and checks it.
    void CheckEnd();

private:
    void SendToEngine(std::uint32_t frontEnd, const std::wstring& stream);
    void SendToFrontEnds();
    void ChangeHandlers();
    void JoinLate();

    OperationCounts& counts;
    StreamCheck atEngine;
    std::vector<std::unique_ptr<StreamCheck>> echoes;
    std::vector<std::unique_ptr<StreamCheck>> broadcasts;
    std::vector<std::unique_ptr<CheckingHandler>> handlers;
    std::vector<in_process::Endpoint*> frontEnds;
    in_process::Bus line;
    in_process::Endpoint& engine = *line.GetServer();
    Echo first{engine, atEngine};
    Echo second{engine, atEngine};
};

LineRound::LineRound(OperationCounts& operationCounts) : counts(operationCounts) {
    engine.AddEventHandler(L"number", &first);
    for (std::uint32_t number = 0; number < frontEndCount; ++number) {
        frontEnds.push_back(line.GetClient(Name(L"front", number)));
        for (auto* checks : {&echoes, &broadcasts}) {
            StreamCheck& check = *checks->emplace_back(std::make_unique<StreamCheck>());
            handlers.push_back(std::make_unique<CheckingHandler>(check));
            frontEnds.back()->AddEventHandler(checks == &echoes ? L"echo" : L"broadcast", handlers.back().get());
        }
    }
}

LineRound::~LineRound() {
    engine.AddEventHandler(L"number", nullptr);
    for (in_process::Endpoint* frontEnd : frontEnds) {
        frontEnd->AddEventHandler(L"echo", nullptr);
        frontEnd->AddEventHandler(L"broadcast", nullptr);
    }
}

void LineRound::Run() {
    ThreadTeam asking;
    asking.AddEndless([this] { ChangeHandlers(); });
    asking.AddEndless([this] { JoinLate(); });
    ThreadTeam sending;
    for (std::uint32_t number = 0; number < frontEndCount; ++number) {
        sending.Add([this, number] { SendToEngine(number, Name(L"a", number)); });
        sending.Add([this, number] { SendToEngine(number, Name(L"b", number)); });
    }
    sending.Add([this] { SendToFrontEnds(); });
    sending.Join();
    asking.Join();
}

void LineRound::CheckEnd() {
    for (std::uint32_t number = 0; number < frontEndCount; ++number) {
        for (const std::wstring& stream : {Name(L"a", number), Name(L"b", number)}) {
            while (echoes[number]->LastOf(stream) != eventsEach) {
                std::this_thread::yield();
            }
        }
        while (broadcasts[number]->LastOf(L"all") != eventsEach) {
            std::this_thread::yield();
        }
        EXPECT_EQ(echoes[number]->Problems(), std::vector<std::string>());
        EXPECT_EQ(broadcasts[number]->Problems(), std::vector<std::string>());
        EXPECT_EQ(echoes[number]->Count(), 2 * eventsEach);
        EXPECT_EQ(broadcasts[number]->Count(), eventsEach);
    }
    EXPECT_EQ(atEngine.Problems(), std::vector<std::string>());
    EXPECT_EQ(atEngine.Count(), 2 * eventsEach * frontEndCount);
}

void LineRound::SendToEngine(std::uint32_t frontEnd, const std::wstring& stream) {
    for (std::uint32_t number = 1; number <= eventsEach; ++number) {
        EXPECT_TRUE(frontEnds[frontEnd]->SendEvent(L"number", NumberedEvent{stream, number}.Payload()));
    }
    counts.Add("events to the engine and back", eventsEach);
}

void LineRound::SendToFrontEnds() {
    for (std::uint32_t number = 1; number <= eventsEach; ++number) {
        EXPECT_TRUE(engine.SendEvent(L"broadcast", NumberedEvent{L"all", number}.Payload()));
    }
    counts.Add("events to all front ends", eventsEach);
}

/// Each event finds exactly one of the two handlers.
void LineRound::ChangeHandlers() {
    engine.AddEventHandler(L"number", &second);
    engine.AddEventHandler(L"number", &first);
    counts.Add("changes of a handler", 2);
}

/// A front end that connects late and registers and removes a handler repeatedly.
void LineRound::JoinLate() {
    in_process::Endpoint* const late = line.GetClient(L"late");
    StreamCheck check(StreamCheck::Streams::BegunAnywhere);
    CheckingHandler handler(check);
    late->AddEventHandler(L"broadcast", &handler);
    EXPECT_TRUE(late->IsConnected());
    late->AddEventHandler(L"broadcast", nullptr);
    EXPECT_EQ(check.Problems(), std::vector<std::string>());
    counts.Add("handlers come and gone");
}

} // namespace

TEST(LineStressTest, EveryEventArrivesOnceAndInOrderWhileHandlersChange) {
    OperationCounts counts("in_process");
    for (Rounds rounds; rounds.Next();) {
        const test_support::Deadline deadline("the events of a line", std::chrono::minutes(5));
        LineRound round(counts);
        round.Run();
        round.CheckEnd();
        counts.Add("rounds");
        if (testing::Test::HasFailure()) {
            return;
        }
    }
}

TEST(LineStressTest, ALineEndsWhileItsHandlersSend) {
    const test_support::Deadline deadline("the end of a line", std::chrono::minutes(5));
    for (int turn = 0; turn < 200; ++turn) {
        StreamCheck check;
        auto line = std::make_unique<in_process::Bus>();
        in_process::Endpoint& engine = *line->GetServer();
        Echo echo(engine, check);
        engine.AddEventHandler(L"number", &echo);
        for (std::uint32_t number = 1; number <= 20; ++number) {
            line->GetClient(L"one")->PostEvent(L"number", NumberedEvent{L"a", number}.Payload());
        }
        line.reset();
        EXPECT_EQ(check.Problems(), std::vector<std::string>());
    }
}
