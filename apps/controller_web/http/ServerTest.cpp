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

class ServerTest : public ServerFixture {
protected:
    static web::Response With(std::unique_ptr<web::ContentReader> content) {
        web::Response response;
        response.headers = {{"Content-Type", "application/octet-stream"}};
        response.body = std::move(content);
        return response;
    }
};

TEST_F(ServerTest, ASignedInBrowserGetsThePageWithItsProtection) {
    Start();
    const RawAnswer page = Ask(Request("GET", "/"));
    EXPECT_EQ(page.status, 200U);
    EXPECT_EQ(page.body, "<p>the page");
    EXPECT_TRUE(page.Header("Content-Security-Policy").starts_with("default-src 'none'; script-src 'self'"));
    EXPECT_EQ(page.Header("X-Content-Type-Options"), "nosniff");
}

TEST_F(ServerTest, TheHandlerGetsTheBody) {
    Start();
    const RawAnswer echo = Ask(Request("POST", "/api/v1/jobs", "", "{}"));
    EXPECT_EQ(echo.status, 200U);
    EXPECT_EQ(echo.body, "{}");
}

TEST_F(ServerTest, AChunkedBodyArrivesWhole) {
    Start();
    const RawAnswer echo = Ask(Request("POST", "/api/v1/jobs", "Transfer-Encoding: chunked\r\n") +
                               "1\r\n{\r\n5;x=y\r\n\"a\":1\r\n1\r\n}\r\n0\r\n\r\n");
    EXPECT_EQ(echo.body, "{\"a\":1}");
}

TEST_F(ServerTest, StrangersReachNoHandler) {
    Start();
    EXPECT_EQ(Ask(RequestOfStranger("GET", "/api/v1/jobs")).status, 401U);
    EXPECT_EQ(Ask(RequestOfStranger("GET", "/api/v1/jobs", "Cookie: " + cookie + "0\r\n")).status, 401U);
    EXPECT_EQ(calls, 0);
}

TEST_F(ServerTest, ARequestForAnotherHostReachesNoHandler) {
    Start();
    const std::string session = "Cookie: " + cookie + "\r\n\r\n";
    EXPECT_EQ(Ask("GET /api/v1/jobs HTTP/1.1\r\nHost: evil.example\r\n" + session).status, 421U);
    EXPECT_EQ(Ask("GET /api/v1/jobs HTTP/1.1\r\n" + session).status, 421U);
    EXPECT_EQ(Ask("GET /api/v1/jobs HTTP/1.1\r\nHost: " + Host() + "\r\nHost: evil.example\r\n" + session).status,
              421U);
    EXPECT_EQ(calls, 0);
}

TEST_F(ServerTest, AForgedRequestOfAnotherSiteReachesNoHandler) {
    Start();
    const std::string session = "Cookie: " + cookie + "\r\nContent-Type: application/json\r\nContent-Length: 2\r\n";
    for (const std::string headers : {"", "Origin: http://evil.example\r\n", "Origin: null\r\n",
                                      "Sec-Fetch-Site: cross-site\r\n", "Sec-Fetch-Site: same-site\r\n"}) {
        EXPECT_EQ(Ask(RequestOfStranger("POST", "/api/v1/jobs", session + headers) + "{}").status, 403U) << headers;
    }
    EXPECT_EQ(calls, 0);
}

TEST_F(ServerTest, ALinkIsForOneUse) {
    Start();
    std::string secret;
    ASSERT_TRUE(web::OneTimeLinks(directory / L"links", [] { return 1'000'000; }).Make(secret));
    EXPECT_EQ(Ask(RequestOfStranger("GET", "/login?token=" + secret)).status, 303U);
    EXPECT_EQ(Ask(RequestOfStranger("GET", "/login?token=" + secret)).status, 401U);
}

TEST_F(ServerTest, WhatIsNoRequestIsRefusedAndClosed) {
    Start();
    const std::string host = "Host: " + Host() + "\r\n";
    const std::vector<std::string> requests = {
        "garbage\r\n\r\n",
        "GET / HTTP/2.0\r\n" + host + "\r\n",
        "GET  HTTP/1.1\r\n" + host + "\r\n",
        "GET /\0 HTTP/1.1\r\n" + host + "\r\n",
        std::string("GET /\0 HTTP/1.1\r\n", 18) + host + "\r\n",
        "GET / HTTP/1.1\r\nHost : " + Host() + "\r\n\r\n",
        "POST / HTTP/1.1\r\n" + host + "Content-Length: -1\r\n\r\n",
        "POST / HTTP/1.1\r\n" + host + "Content-Length: +4\r\n\r\n",
        "POST / HTTP/1.1\r\n" + host + "Content-Length: 1\r\nContent-Length: 2\r\n\r\n",
        "POST / HTTP/1.1\r\n" + host + "Content-Length: 4\r\nTransfer-Encoding: chunked\r\n\r\n"};
    for (const std::string& request : requests) {
        RawClient client(port);
        EXPECT_TRUE(client.Send(request));
        EXPECT_EQ(client.Receive().status, 400U) << request;
        EXPECT_EQ(client.ReceiveRest(), "") << request;
    }
    EXPECT_EQ(calls, 0);
}

TEST_F(ServerTest, AChunkOfANegativeSizeIsRefused) {
    Start();
    const std::string head = Request("POST", "/api/v1/jobs", "Transfer-Encoding: chunked\r\n");
    EXPECT_EQ(Ask(head + "-2\r\n").status, 400U);
    EXPECT_EQ(Ask(head + "FFFFFFFFFFFFFFFE\r\n").status, 413U);
    EXPECT_EQ(calls, 0);
}

TEST_F(ServerTest, RequestsThatWereSentAtOnceAreAnsweredInOrder) {
    Start();
    RawClient client(port);
    EXPECT_TRUE(client.Send(Request("POST", "/api/v1/a", "", "1") + Request("GET", "/") +
                            Request("POST", "/api/v1/a", "", "3")));
    EXPECT_EQ(client.Receive().body, "1");
    EXPECT_EQ(client.Receive().body, "<p>the page");
    EXPECT_EQ(client.Receive().body, "3");
}

TEST_F(ServerTest, AThousandRequestsUseOneConnection) {
    Start();
    RawClient client(port);
    for (int count = 0; count < 1000; ++count) {
        const std::string body = std::to_string(count);
        ASSERT_TRUE(client.Send(Request("POST", "/api/v1/a", "", body)));
        ASSERT_EQ(client.Receive().body, body);
    }
}

TEST_F(ServerTest, HeadHasNoBodyAndLeavesTheConnectionOpen) {
    Start();
    RawClient client(port);
    EXPECT_TRUE(client.Send(Request("HEAD", "/") + Request("GET", "/")));
    const RawAnswer head = client.Receive(false);
    EXPECT_EQ(head.status, 200U);
    EXPECT_EQ(head.Header("Content-Length"), "11");
    EXPECT_EQ(client.Receive().body, "<p>the page");
}

TEST_F(ServerTest, AKnownVersionIsNotSentAgain) {
    Start();
    RawClient client(port);
    EXPECT_TRUE(client.Send(Request("GET", "/", "If-None-Match: \"1a\"\r\n") + Request("GET", "/")));
    EXPECT_EQ(client.Receive().status, 304U);
    EXPECT_EQ(client.Receive().status, 200U);
}

TEST_F(ServerTest, AClientThatAsksMayContinue) {
    Start();
    RawClient client(port);
    EXPECT_TRUE(client.Send(Request("POST", "/api/v1/a", "Expect: 100-continue\r\nContent-Length: 2\r\n")));
    EXPECT_EQ(client.Receive().status, 100U);
    EXPECT_TRUE(client.Send("{}"));
    EXPECT_EQ(client.Receive().body, "{}");
}

TEST_F(ServerTest, AClientThatIsRefusedIsNotAskedToContinue) {
    Start();
    EXPECT_EQ(Ask(RequestOfStranger("POST", "/api/v1/a", "Expect: 100-continue\r\nContent-Length: 2\r\n")).status,
              403U);
}

TEST_F(ServerTest, ContentOfAKnownSizeHasItsLength) {
    const std::string bytes(1'000'000, 'x');
    answer = [&](const web::Request&) { return With(ContentOf(bytes, bytes.size())); };
    Start();
    RawClient client(port);
    EXPECT_TRUE(client.Send(Request("GET", "/api/v1/a") + Request("HEAD", "/api/v1/a") + Request("GET", "/")));
    const RawAnswer content = client.Receive();
    EXPECT_EQ(content.Header("Content-Length"), "1000000");
    EXPECT_TRUE(content.body == bytes);
    EXPECT_EQ(client.Receive(false).status, 200U);
    EXPECT_EQ(client.Receive().body, "<p>the page");
}

TEST_F(ServerTest, ContentOfAnUnknownSizeComesInChunks) {
    const std::string bytes(1'000'000, 'x');
    answer = [&](const web::Request&) { return With(ContentOf(bytes, {})); };
    Start();
    RawClient client(port);
    EXPECT_TRUE(client.Send(Request("GET", "/api/v1/a") + Request("GET", "/")));
    const RawAnswer content = client.Receive();
    EXPECT_TRUE(content.body == bytes);
    EXPECT_TRUE(content.isComplete);
    EXPECT_EQ(client.Receive().body, "<p>the page");
}

TEST_F(ServerTest, AnOldClientGetsSuchContentUpToTheEnd) {
    answer = [](const web::Request&) { return With(ContentOf("bytes", {})); };
    Start();
    const RawAnswer content = Ask("GET /api/v1/a HTTP/1.0\r\nHost: " + Host() + "\r\nCookie: " + cookie + "\r\n\r\n");
    EXPECT_EQ(content.Header("Transfer-Encoding"), "");
    EXPECT_EQ(content.body, "bytes");
}

TEST_F(ServerTest, ContentThatCannotBeReadToItsEndIsSeenToBeIncomplete) {
    const std::vector<std::function<std::unique_ptr<web::ContentReader>()>> contents = {
        [] { return ContentOf("part", {}, true); }, [] { return ContentOf("part", 10, true); },
        [] { return ContentOf("part", 10); }};
    std::size_t number = 0;
    answer = [&](const web::Request&) { return With(contents[number]()); };
    Start();
    for (; number < contents.size(); ++number) {
        EXPECT_FALSE(Ask(Request("GET", "/api/v1/a")).isComplete) << number;
    }
}

TEST_F(ServerTest, ContentThatIsLongerThanAnnouncedIsNotSentBeyondItsLength) {
    answer = [](const web::Request&) { return With(ContentOf("longer", 4)); };
    Start();
    RawClient client(port);
    EXPECT_TRUE(client.Send(Request("GET", "/api/v1/a")));
    EXPECT_EQ(client.ReceiveRest().find("longer"), std::string::npos);
}

TEST_F(ServerTest, ASlowRequestHoldsUpNoOther) {
    std::promise<void> release;
    const std::shared_future<void> released = release.get_future().share();
    answer = [&](const web::Request& request) {
        if (request.path.back() == "slow") {
            released.wait();
        }
        return web::TextResponse(200, "text/plain", request.path.back());
    };
    Start();
    RawClient slow(port);
    EXPECT_TRUE(slow.Send(Request("GET", "/api/v1/slow")));
    EXPECT_EQ(Ask(Request("GET", "/api/v1/quick")).body, "quick");
    EXPECT_EQ(Ask(Request("GET", "/")).status, 200U);
    release.set_value();
    EXPECT_EQ(slow.Receive().body, "slow");
}

TEST_F(ServerTest, AnAnswerWithALineBreakInAHeaderIsNotSent) {
    answer = [](const web::Request&) {
        web::Response response = web::TextResponse(200, "text/plain", "x");
        response.headers.emplace_back("Content-Disposition", "a\r\nSet-Cookie: b=c");
        return response;
    };
    Start();
    const RawAnswer refused = Ask(Request("GET", "/api/v1/a"));
    EXPECT_EQ(refused.status, 500U);
    EXPECT_EQ(refused.Header("Set-Cookie"), "");
}

TEST_F(ServerTest, APortHasOneServer) {
    Start();
    web::Server second;
    EXPECT_EQ(second.Listen(port).kind, platform::ErrorKind::InUse);
}

} // namespace
