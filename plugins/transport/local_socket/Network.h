#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <string>

/// Interface between the sessions and the operating system: connections, timers, and the thread that reports events.
///
/// One lock per network guards everything that belongs to it. Callers of a channel or timer hold the lock, and every
/// callback runs on the network's thread with the lock held. No call blocks unless its contract says so.
namespace local_socket {

/// One open connection. At most one read and one write are in progress.
class Channel {
public:
    using Done = std::function<void(bool succeeded, std::size_t bytes)>;

    virtual ~Channel() = default;
    Channel(const Channel&) = delete;
    Channel& operator=(const Channel&) = delete;

    /// Reads the available bytes, at least one; fails at the end of the stream. `buffer` must stay valid until `done`
    /// is called or destroyed.
    virtual void Read(char* buffer, std::size_t size, Done done) = 0;
    /// Writes at least one byte. Bytes that the system accepts at once are sent when this returns. `bytes` must stay
    /// valid until `done` is called or destroyed.
    virtual void Write(const char* bytes, std::size_t size, Done done) = 0;
    /// Closes the connection; operations in progress fail.
    virtual void Close() = 0;

protected:
    Channel() = default;
};

/// A timer with at most one pending expiry.
class Timer {
public:
    virtual ~Timer() = default;
    Timer(const Timer&) = delete;
    Timer& operator=(const Timer&) = delete;

    /// Calls `expired` once after `delay`. Replaces a pending expiry.
    virtual void Start(std::chrono::milliseconds delay, std::function<void()> expired) = 0;
    virtual void Cancel() = 0;

protected:
    Timer() = default;
};

/// Result of a connection attempt.
struct Connection {
    /// Null on failure.
    std::unique_ptr<Channel> channel;
    /// Reason of the failure for the log; empty if no server listens.
    std::wstring failure;
    /// True if the server is there but has no room for another client.
    bool isBusy = false;
};

/// What a server can do for a new client.
enum class Room : std::int32_t {
    Free,
    /// The process has no handle left: the connection lasts only until the callback returns.
    None
};

class Network {
public:
    using OnConnected = std::function<void(std::unique_ptr<Channel>, Room)>;
    using Log = std::function<void(const std::wstring& message)>;

    virtual ~Network() = default;
    Network(const Network&) = delete;
    Network& operator=(const Network&) = delete;

    std::mutex& Lock() { return lock; }

    virtual std::unique_ptr<Timer> MakeTimer() = 0;

    /// Listens at the endpoint `name` and passes every client of the same user to `onConnected`. Returns an empty text
    /// on success, otherwise the reason, for example another server at this endpoint. Call once, without the lock.
    virtual std::wstring Listen(const std::string& name, OnConnected onConnected) = 0;

    /// Connects to the server of the same user at `name`. May block for a moment if the server is busy. Call without
    /// the lock.
    virtual Connection Connect(const std::string& name) = 0;

    /// Body of the network's thread: processes events until `Stop` is called.
    virtual void Run() = 0;
    virtual void Stop() = 0;

protected:
    Network() = default;

private:
    std::mutex lock;
};

/// Creates the network of this system: Unix domain sockets or named pipes. `log` gets the errors that no caller
/// receives; any thread calls it.
std::unique_ptr<Network> MakeLocalNetwork(Network::Log log);

/// The native path of the socket or pipe of the endpoint `name`, for display.
std::wstring LocalPlace(const std::string& name);

} // namespace local_socket
