#include "controller_web/http/Server.h"

#include <future>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "controller_web/http/ErrorResponse.h"
#include "kit/web/ServerFixture.h"

using test_support::RawAnswer;
using test_support::RawClient;

namespace {

constexpr std::chrono::milliseconds atOnce{50};

class ServerLimitsTest : public ServerFixture {};

/// Tells when it has ended.
class EndlessContent final : public web::ContentReader {
public:
    explicit EndlessContent(std::promise<void>& endedPromise) : ended(endedPromise) {}
    ~EndlessContent() override { ended.set_value(); }
    std::optional<std::uint64_t> Size() const override { return {}; }
    std::optional<std::size_t> Read(std::span<char> block) override { return block.size(); }

private:
    std::promise<void>& ended;
};

TEST_F(ServerLimitsTest, AHeaderOverTheLimitIsRefused) {
    Start();
    EXPECT_EQ(Ask(Request("GET", "/", "X: " + std::string(20'000, 'x') + "\r\n")).status, 431U);
    EXPECT_EQ(Ask(Request("GET", "/" + std::string(20'000, 'x'))).status, 431U);
    std::string many;
    for (int count = 0; count < 5000; ++count) {
        many += "X-" + std::to_string(count) + ": y\r\n";
    }
    EXPECT_EQ(Ask(Request("GET", "/", many)).status, 431U);
}

TEST_F(ServerLimitsTest, AHeaderWithoutEndIsRefusedWithoutBeingKept) {
    Start();
    RawClient client(port);
    (void)client.Send("GET / HTTP/1.1\r\nX: ");
    const std::string block(65'536, 'x');
    for (int count = 0; count < 16 && client.Send(block); ++count) {
    }
    EXPECT_EQ(client.Receive().status, 431U);
}

TEST_F(ServerLimitsTest, AnAnnouncedBodyOverTheLimitIsRefusedBeforeItIsSent) {
    Start();
    const std::string size = std::to_string(web::Site::jsonLimit + 1);
    EXPECT_EQ(Ask(Request("POST", "/api/v1/jobs", "Content-Length: " + size + "\r\n")).status, 413U);
    EXPECT_EQ(Ask(Request("POST", "/api/v1/jobs", "Content-Length: 18446744073709551615\r\n")).status, 413U);
    EXPECT_EQ(calls, 0);
}

TEST_F(ServerLimitsTest, AChunkedBodyOverTheLimitIsRefused) {
    Start();
    RawClient client(port);
    (void)client.Send(Request("POST", "/api/v1/jobs", "Transfer-Encoding: chunked\r\n"));
    const std::string chunk = "100000\r\n" + std::string(0x100000, 'x') + "\r\n";
    for (int count = 0; count < 18 && client.Send(chunk); ++count) {
    }
    EXPECT_EQ(client.Receive().status, 413U);
    EXPECT_EQ(calls, 0);
}

TEST_F(ServerLimitsTest, ABodyUpToTheLimitIsTaken) {
    answer = [](const web::Request& request) {
        return web::TextResponse(200, "text/plain", std::to_string(request.body.size()));
    };
    Start();
    EXPECT_EQ(Ask(Request("POST", "/api/v1/jobs", "", std::string(web::Site::jsonLimit, 'x'))).body,
              std::to_string(web::Site::jsonLimit));
}

TEST_F(ServerLimitsTest, ARefusedSenderCanReadTheAnswer) {
    Start();
    RawClient client(port);
    EXPECT_TRUE(client.Send(
        RequestOfStranger("POST", "/api/v1/jobs", "Origin: http://" + Host() + "\r\nContent-Length: 2000000\r\n")));
    EXPECT_TRUE(client.Send(std::string(2'000'000, 'x')));
    EXPECT_EQ(client.Receive().status, 401U);
    EXPECT_EQ(client.ReceiveRest(), "");
    EXPECT_EQ(calls, 0);
}

TEST_F(ServerLimitsTest, AConnectionWithoutRequestsIsClosed) {
    limits.idle = atOnce;
    Start();
    RawClient silent(port);
    EXPECT_EQ(silent.ReceiveRest(), "");
}

TEST_F(ServerLimitsTest, AHeaderThatStopsIsClosedAndHoldsUpNobody) {
    limits.headerTime = atOnce;
    Start();
    std::vector<std::unique_ptr<RawClient>> slow;
    for (int count = 0; count < 100; ++count) {
        slow.push_back(std::make_unique<RawClient>(port));
        EXPECT_TRUE(slow.back()->Send("GET / HTTP/1.1\r\nHost: "));
    }
    for (const auto& client : slow) {
        EXPECT_EQ(client->ReceiveRest(), "");
    }
}

TEST_F(ServerLimitsTest, ABodyThatStopsIsClosedWithoutTheHandler) {
    limits.bodyTime = atOnce;
    Start();
    RawClient client(port);
    EXPECT_TRUE(client.Send(Request("POST", "/api/v1/jobs", "Content-Length: 10\r\n") + "{"));
    EXPECT_EQ(client.ReceiveRest(), "");
    EXPECT_EQ(calls, 0);
}

TEST_F(ServerLimitsTest, ARequestThatEndsEarlyIsNoRequest) {
    Start();
    RawClient client(port);
    EXPECT_TRUE(client.Send(Request("POST", "/api/v1/jobs", "Content-Length: 10\r\n") + "{"));
    client.EndSending();
    EXPECT_EQ(client.ReceiveRest(), "");
    EXPECT_EQ(calls, 0);
}

TEST_F(ServerLimitsTest, AClientThatDoesNotReadIsClosed) {
    std::promise<void> ended;
    limits.writeTime = atOnce;
    answer = [&ended](const web::Request&) {
        web::Response response;
        response.body = std::make_unique<EndlessContent>(ended);
        return response;
    };
    Start();
    RawClient client(port);
    EXPECT_TRUE(client.Send(Request("GET", "/api/v1/a")));
    ended.get_future().wait();
    EXPECT_FALSE(client.Receive().isComplete);
}

TEST_F(ServerLimitsTest, AProgramThatMayNotConnectGetsNoAnswer) {
    std::atomic<bool> isAccepted = true;
    std::atomic<std::uint16_t> checkedPort = 0;
    acceptsPeer = [&](std::uint16_t ownPort, std::uint16_t /*peerPort*/) {
        checkedPort = ownPort;
        return isAccepted.load();
    };
    Start();
    EXPECT_EQ(Ask(Request("GET", "/")).status, 200U);
    isAccepted = false;
    RawClient client(port);
    EXPECT_EQ(client.ReceiveRest(), "");
    EXPECT_EQ(checkedPort, port);
}

TEST_F(ServerLimitsTest, AConnectionTooManyIsClosedAndTheOthersGoOn) {
    limits.connections = 2;
    Start();
    RawClient one(port);
    EXPECT_TRUE(one.Send(Request("GET", "/")));
    EXPECT_EQ(one.Receive().status, 200U);
    RawClient other(port);
    EXPECT_TRUE(other.Send(Request("GET", "/")));
    EXPECT_EQ(other.Receive().status, 200U);
    RawClient third(port);
    EXPECT_EQ(third.ReceiveRest(), "");
    EXPECT_TRUE(one.Send(Request("GET", "/")));
    EXPECT_EQ(one.Receive().status, 200U);
}

} // namespace
