#include <atomic>
#include <memory>
#include <string>
#include <thread>

#include <gtest/gtest.h>

#include "kit/local_socket/EndpointNames.h"
#include "kit/local_socket/Module.h"

/// The tested code runs after the test: each process must end normally, or its exit code fails the entry.
namespace {

class EchoHandler final : public CallbackFunctor {
public:
    explicit EchoHandler(EventTransmitter* end) : transmitter(end) {}

    bool operator()(const std::wstring& payload) override {
        ++calls;
        return transmitter->SendEvent(L"Echo", payload);
    }

    std::atomic<int> calls{0};

private:
    EventTransmitter* const transmitter;
};

/// Handlers must outlive their use; here they are used until the process ends.
EchoHandler& Echoing(EventTransmitter* end) {
    EchoHandler& handler = *std::make_unique<EchoHandler>(end).release();
    end->AddEventHandler(L"Echo", &handler);
    return handler;
}

struct Ends {
    EventTransmitter* engine;
    EventTransmitter* client;
    EventTransmitterExtension* clientExtension;
};

Ends NewEnds() {
    const std::string name = NewEndpointName();
    const std::wstring place(name.begin(), name.end());
    return {TransmitterFromModule(L"engine:" + place), TransmitterFromModule(L"client:" + place),
            ExtensionFromModule(L"client:" + place)};
}

void WaitForCalls(const EchoHandler& handler, int count) {
    while (handler.calls < count) {
        std::this_thread::yield();
    }
}

TEST(ProcessEndTest, WhileBothEndsAnswerEachOther) {
    const Ends ends = NewEnds();
    const EchoHandler& atEngine = Echoing(ends.engine);
    Echoing(ends.client);
    for (int ball = 0; ball < 20; ++ball) {
        EXPECT_TRUE(ends.client->SendEvent(L"Echo", std::wstring(1000, L'e')));
    }
    WaitForCalls(atEngine, 100);
}

TEST(ProcessEndTest, WhileOtherThreadsSend) {
    const Ends ends = NewEnds();
    const EchoHandler& atEngine = Echoing(ends.engine);
    for (int number = 0; number < 3; ++number) {
        std::thread([client = ends.client] {
            while (true) { // sending after the transmitters' end is refused
                client->SendEvent(L"Echo", L"more");
            }
        }).detach();
    }
    WaitForCalls(atEngine, 100);
}

TEST(ProcessEndTest, WithConnectionsThatAreSilent) {
    const Ends ends = NewEnds();
    EXPECT_TRUE(ends.clientExtension->IsConnected());
}

} // namespace
