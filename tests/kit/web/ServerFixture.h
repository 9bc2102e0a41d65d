#pragma once

#include "controller_web/http/Server.h"
#include "kit/Deadline.h"
#include "kit/TemporaryDirectory.h"
#include "kit/web/RawClient.h"

#include <atomic>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

/// A real server on a port of its own, with a handler that a test gives it.
class ServerFixture : public testing::Test {
protected:
    using Answer = std::function<web::Response(const web::Request&)>;

    ServerFixture();
    ~ServerFixture() override;

    /// Starts the server and signs a browser in. Limits and answer are those of this moment.
    void Start();
    /// Stops the server and returns when it has ended.
    void Stop();

    /// A request with the headers that the page's own requests have.
    std::string Request(const std::string& method, const std::string& target, const std::string& moreHeaders = "",
                        const std::string& body = "") const;
    /// The same without a session.
    std::string RequestOfStranger(const std::string& method, const std::string& target,
                                  const std::string& moreHeaders = "") const;
    std::string Host() const { return "127.0.0.1:" + std::to_string(port); }

    /// The sizes of the uploads that are arriving.
    std::vector<std::uint64_t> SizesOfArriving() const;

    /// The answer to one request on a connection of its own.
    test_support::RawAnswer Ask(const std::string& request) const;

    const test_support::Deadline deadline{"a test of the web server"};
    const TemporaryDirectory directory;
    /// Where uploads are stored while they arrive.
    const std::wstring arriving = directory / L"arriving";
    web::ServerLimits limits;
    web::Server::PeerCheck acceptsPeer;
    Answer answer;
    /// How often the handler was called.
    std::atomic<int> calls = 0;
    std::uint16_t port = 0;
    std::string cookie;

private:
    class CallingHandler;

    std::unique_ptr<web::Handler> handler;
    std::optional<web::Site> site;
    std::unique_ptr<web::Server> server;
    std::thread thread;
};

/// A body of bytes from a function that returns less with each call, as `web::ContentReader::Read`.
std::unique_ptr<web::ContentReader> ContentOf(std::string bytes, std::optional<std::uint64_t> size, bool fails = false);
