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
    /// Everything that the session has written and the test has let through.
    std::string written;
    bool isClosed = false;
    /// While false, a write stays pending until `TakeWrite`.
    bool takesWrites = true;
    /// After this, writes fail.
    bool failsWrites = false;

    bool IsReading() const { return static_cast<bool>(reading); }
    /// Delivers bytes from the peer, as many as one read accepts at a time.
    void Receive(std::string_view bytes);
    /// The peer disconnects.
    void ReceiveEnd();
    /// The peer accepts the pending write and all later ones.
    void TakeWrite();

    // Requests of the session
    char* readBuffer = nullptr;
    std::size_t readSize = 0;
    local_socket::Channel::Done reading;
    std::string_view toWrite;
    local_socket::Channel::Done writing;
};

/// A simulated network: the test supplies input and advances the clock. One thread.
class FakeNetwork final : public local_socket::Network {
public:
    /// A channel to `connection`, which must outlive it.
    static std::unique_ptr<local_socket::Channel> ChannelTo(FakeConnection& connection);

    /// Advances time, so that timers expire.
    void Advance(std::chrono::milliseconds time);
    /// The number of attempts to connect.
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
