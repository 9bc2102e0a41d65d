#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "transport/local_socket/Network.h"

/// The test's side of a channel.
struct FakeConnection {
    /// All that the session has written and the test has let through.
    std::string written;
    bool isClosed = false;
    /// While false, a write stays under way, until `TakeWrite`.
    bool takesWrites = true;
    /// From now on, writes fail.
    bool failsWrites = false;

    bool IsReading() const { return static_cast<bool>(reading); }
    /// These bytes come from the peer, as many as one read takes at a time.
    void Receive(std::string_view bytes);
    /// The peer goes.
    void ReceiveEnd();
    /// The peer takes the write that is under way, and all that follow.
    void TakeWrite();

    // What the session asked for
    char* readBuffer = nullptr;
    std::size_t readSize = 0;
    local_socket::Channel::Done reading;
    std::string_view toWrite;
    local_socket::Channel::Done writing;
};

/// A network without any: the test says what comes in, and turns the clock. One thread.
class FakeNetwork final : public local_socket::Network {
public:
    /// A channel whose other side is `connection`; that must live longer.
    static std::unique_ptr<local_socket::Channel> ChannelTo(FakeConnection& connection);

    /// Lets time pass: timers expire.
    void Advance(std::chrono::milliseconds time);
    /// How often somebody tried to connect.
    int Attempts() const { return attempts; }

    std::unique_ptr<local_socket::Timer> MakeTimer() override;
    std::wstring Listen(const std::string&, OnConnected) override { return L"not here"; }
    local_socket::Connection Connect(const std::string&) override {
        ++attempts;
        return {};
    }
    void Run() override {}
    void Stop() override {}

private:
    struct Alarm {
        std::chrono::milliseconds time{};
        std::function<void()> expired;
    };
    class FakeTimer;

    std::chrono::milliseconds now{0};
    int attempts = 0;
    std::vector<std::shared_ptr<Alarm>> alarms;
};
