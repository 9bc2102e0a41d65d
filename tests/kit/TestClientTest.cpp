#include "kit/TestClient.h"

#include <chrono>
#include <future>
#include <memory>
#include <string>
#include <thread>

#include <gtest/gtest.h>

#include "kit/Deadline.h"
#include "kit/doubles/RecordingHandler.h"
#include "kit/local_socket/EndpointNames.h"
#include "kit/local_socket/Module.h"
#include "kit/local_socket/RecordingLog.h"
#include "transport/local_socket/Server.h"

using local_socket::Server;

namespace {

/// A host that answers at once and ends at the request. Its process is an event that is raised at its end.
class AnsweringHost {
public:
    explicit AnsweringHost(const std::string& place)
        : server(Server::Listen(place, local_socket::MakeLocalNetwork(log.Function()), {}, log.Function())) {
        server->AddEventHandler(L"CheckJobStatusRequest", &check);
        server->AddEventHandler(L"TerminateRequest", &terminate);
        ending = std::jthread([this] {
            asked.get_future().wait();
            server.reset();
            ended.Raise();
        });
    }

    void* Process() const { return ended.Handle(); }

private:
    void Answer(const std::wstring& name, const std::wstring& content) {
        EXPECT_TRUE(server->SendEventTo(server->CurrentPeer(), name, content));
    }

    RecordingLog log;
    RecordingHandler check{[this](const std::wstring& content) { Answer(L"CheckJobStatusResponse", content); }};
    RecordingHandler terminate{[this](const std::wstring&) {
        Answer(L"BeforeTheLast", L"");
        Answer(L"TerminateResponse", L"");
        asked.set_value();
    }};
    platform::Event ended;
    std::promise<void> asked;
    std::unique_ptr<Server> server;
    std::jthread ending;
};

/// Called in a handler: returns some time after the connection has ended.
void AwaitDisconnection(EventTransmitterExtension& extension) {
    const auto end = std::chrono::steady_clock::now() + test_support::timeout;
    while (extension.SendEventTo(extension.CurrentPeer(), L"Nothing", L"") && std::chrono::steady_clock::now() < end) {
        std::this_thread::yield();
    }
    for (int turn = 0; turn < 100'000; ++turn) {
        std::this_thread::yield(); // time for a faulty client that does not wait
    }
}

} // namespace

TEST(TestClientTest, TheLastAnswerOfAHostThatEndsIsHandedOut) {
    const std::string place = NewEndpointName();
    const std::wstring name(place.begin(), place.end());
    AnsweringHost host(place);
    TestClient client(name);
    EventTransmitterExtension& extension = *ExtensionFromModule(L"client:" + name);
    RecordingHandler slow([&](const std::wstring&) { AwaitDisconnection(extension); });
    client.Transmitter()->AddEventHandler(L"BeforeTheLast", &slow);
    ASSERT_TRUE(client.Meet(host.Process()));
    EXPECT_NO_THROW(client.Terminate());
    client.Transmitter()->AddEventHandler(L"BeforeTheLast", nullptr);
}
