#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <utility>

#include <asio/buffer.hpp>
#include <asio/error_code.hpp>
#include <asio/executor_work_guard.hpp>
#include <asio/io_context.hpp>
#include <asio/steady_timer.hpp>

#include "transport/local_socket/Network.h"

/// The parts of the network that both systems share. Include only in files that compile Asio.
namespace local_socket {

/// A channel over any Asio stream.
template <typename Stream>
class AsioChannel final : public Channel {
public:
    AsioChannel(Stream openStream, std::mutex& networkLock) : stream(std::move(openStream)), lock(networkLock) {}

    void Read(char* buffer, std::size_t size, Done done) override {
        stream.async_read_some(asio::buffer(buffer, size), Locked(std::move(done)));
    }

    void Write(const char* bytes, std::size_t size, Done done) override {
        stream.async_write_some(asio::buffer(bytes, size), Locked(std::move(done)));
    }

    void Close() override {
        asio::error_code ignored;
        stream.close(ignored);
    }

private:
    auto Locked(Done done) {
        return [&networkLock = lock, kept = std::move(done)](const asio::error_code& error, std::size_t bytes) mutable {
            const std::lock_guard<std::mutex> guard(networkLock);
            // The callback may own the last reference to its session, which must be destroyed with the lock held, too.
            const Done called = std::move(kept);
            called(!error, bytes);
        };
    }

    Stream stream;
    std::mutex& lock;
};

class AsioTimer final : public Timer {
public:
    AsioTimer(asio::io_context& context, std::mutex& networkLock) : timer(context), lock(networkLock) {}
    ~AsioTimer() override { Forget(); }

    void Start(std::chrono::milliseconds delay, std::function<void()> expired) override {
        Forget();
        timer.expires_after(delay);
        timer.async_wait([&networkLock = lock, current = setting, mine = *setting,
                          kept = std::move(expired)](const asio::error_code& error) mutable {
            const std::lock_guard<std::mutex> guard(networkLock);
            const std::function<void()> called = std::move(kept);
            if (!error && *current == mine) {
                called();
            }
        });
    }

    void Cancel() override {
        Forget();
        timer.cancel();
    }

private:
    /// An expired timer's callback may already be queued; the changed `setting` makes it do nothing.
    void Forget() { ++*setting; }

    asio::steady_timer timer;
    std::mutex& lock;
    const std::shared_ptr<std::uint64_t> setting = std::make_shared<std::uint64_t>(0);
};

class AsioNetwork : public Network {
public:
    std::unique_ptr<Timer> MakeTimer() override { return std::make_unique<AsioTimer>(context, Lock()); }
    void Run() override { context.run(); }
    void Stop() override { context.stop(); }

protected:
    /// Delay before the next attempt when the system has no descriptor or handle left for another client.
    static constexpr std::chrono::milliseconds retryDelay{1000};

    asio::io_context context;

private:
    asio::executor_work_guard<asio::io_context::executor_type> staysWithoutWork = asio::make_work_guard(context);
};

} // namespace local_socket
