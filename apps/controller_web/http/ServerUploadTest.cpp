#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "controller_web/http/ErrorResponse.h"
#include "kit/web/ServerFixture.h"

using test_support::RawAnswer;
using test_support::RawClient;

namespace {

constexpr std::size_t megabyte = 1'000'000;

class ServerUploadTest : public ServerFixture {
protected:
    std::string Head(const std::string& lengthHeader) const {
        return RequestOfStranger("POST", "/api/v1/uploads?name=part.stl",
                                 "Cookie: " + cookie + "\r\nOrigin: http://" + Host() +
                                     "\r\nContent-Type: application/octet-stream\r\n" + lengthHeader + "\r\n");
    }

    std::string HeadFor(std::size_t size) const { return Head("Content-Length: " + std::to_string(size)); }

    /// Returns when these sizes have arrived. Each look lets the server go on.
    void AwaitArriving(const std::vector<std::uint64_t>& sizes) const {
        while (SizesOfArriving() != sizes) {
            EXPECT_EQ(Ask(Request("GET", "/")).status, 200U);
        }
    }

    /// Keeps the file of a request as "stored".
    web::Response Keep(const web::Request& request) const {
        const bool isKept = request.file != nullptr && request.file->MoveTo(stored);
        return web::TextResponse(isKept ? 201 : 500, "text/plain",
                                 std::to_string(request.body.size()) + " bytes in memory");
    }

    const std::wstring stored = directory / L"stored";
};

TEST_F(ServerUploadTest, AFileIsOnDiskAndNotInMemory) {
    answer = [this](const web::Request& request) { return Keep(request); };
    Start();
    const std::string content = "solid\n" + std::string(3 * megabyte, 'x');
    const RawAnswer sent = Ask(HeadFor(content.size()) + content);
    EXPECT_EQ(sent.status, 201U);
    EXPECT_EQ(sent.body, "0 bytes in memory");
    EXPECT_EQ(ReadTextFile(stored), content);
    EXPECT_TRUE(SizesOfArriving().empty());
}

TEST_F(ServerUploadTest, WhatHasArrivedIsStoredBeforeTheRestIsSent) {
    answer = [this](const web::Request& request) { return Keep(request); };
    Start();
    RawClient client(port);
    EXPECT_TRUE(client.Send(HeadFor(3 * megabyte)));
    for (std::uint64_t part = 1; part <= 2; ++part) {
        EXPECT_TRUE(client.Send(std::string(megabyte, 'x')));
        AwaitArriving({part * megabyte});
    }
    EXPECT_TRUE(client.Send(std::string(megabyte, 'x')));
    EXPECT_EQ(client.Receive().status, 201U);
    EXPECT_EQ(ReadTextFile(stored), std::string(3 * megabyte, 'x'));
}

TEST_F(ServerUploadTest, AFileInChunksAndOneWithoutBytesArrive) {
    answer = [this](const web::Request& request) { return Keep(request); };
    Start();
    const std::string chunks = "3\r\nabc\r\n2\r\nde\r\n0\r\n\r\n";
    EXPECT_EQ(Ask(Head("Transfer-Encoding: chunked") + chunks).status, 201U);
    EXPECT_EQ(ReadTextFile(stored), "abcde");
    EXPECT_EQ(Ask(HeadFor(0)).status, 201U);
    EXPECT_EQ(ReadTextFile(stored), "");
}

TEST_F(ServerUploadTest, OfAConnectionThatBreaksNothingIsLeft) {
    Start();
    {
        RawClient client(port);
        EXPECT_TRUE(client.Send(HeadFor(megabyte) + "solid"));
        AwaitArriving({5});
    }
    AwaitArriving({});
    EXPECT_EQ(calls, 0);
}

TEST_F(ServerUploadTest, AFileThatNobodyTakesIsRemoved) {
    Start();
    EXPECT_EQ(Ask(HeadFor(5) + "solid").status, 200U);
    AwaitArriving({});
}

TEST_F(ServerUploadTest, AnUploadTooManyIsRefused) {
    limits.uploads = 1;
    Start();
    RawClient first(port);
    EXPECT_TRUE(first.Send(HeadFor(6) + "solid"));
    AwaitArriving({5});
    EXPECT_EQ(Ask(HeadFor(5) + "solid").status, 429U);
    EXPECT_TRUE(first.Send("\n"));
    EXPECT_EQ(first.Receive().status, 200U);
    EXPECT_EQ(Ask(HeadFor(5) + "solid").status, 200U);
}

TEST_F(ServerUploadTest, AFileOverTheLimitIsRefusedBeforeItIsSent) {
    Start();
    EXPECT_EQ(Ask(HeadFor(web::Site::uploadLimit + 1)).status, 413U);
    EXPECT_TRUE(SizesOfArriving().empty());
    EXPECT_EQ(calls, 0);
}

TEST_F(ServerUploadTest, AFileThatCannotBeStoredIsAnAnswer) {
    WriteTextFile(arriving, "no directory");
    Start();
    const RawAnswer refused = Ask(HeadFor(5) + "solid");
    EXPECT_EQ(refused.status, 500U);
    EXPECT_NE(refused.body.find("cannot be stored"), std::string::npos) << refused.body;
    EXPECT_EQ(calls, 0);
}

TEST_F(ServerUploadTest, AServerThatStopsLeavesNothing) {
    limits.stopTime = std::chrono::milliseconds(50);
    Start();
    RawClient client(port);
    EXPECT_TRUE(client.Send(HeadFor(megabyte) + "solid"));
    AwaitArriving({5});
    Stop();
    EXPECT_TRUE(SizesOfArriving().empty());
}

} // namespace
