#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <string>

/// The outside world as the sessions see it: connections, time, and the thread that tells what happened.
///
/// One lock per network guards everything that belongs to it. Whoever calls a channel or a timer holds the lock, and
/// every callback comes on the network's thread with the lock held. No call waits, unless it says so.
namespace local_socket {

/// One open connection. Reads and writes one at a time each.
class Channel {
public:
    using Done = std::function<void(bool succeeded, std::size_t bytes)>;

    virtual ~Channel() = default;
    Channel(const Channel&) = delete;
    Channel& operator=(const Channel&) = delete;

    /// Reads what has come, at least one byte; fails at the end of the stream. `buffer` must stay until `done` is
    /// called or destroyed.
    virtual void Read(char* buffer, std::size_t size, Done done) = 0;
    /// Writes at least one byte. What the system takes at once is on its way when this returns. `bytes` must stay until
    /// `done` is called or destroyed.
    virtual void Write(const char* bytes, std::size_t size, Done done) = 0;
    /// Closes the connection; what is under way fails.
    virtual void Close() = 0;

protected:
    Channel() = default;
};

/// One moment to come, at most.
class Timer {
public:
    virtual ~Timer() = default;
    Timer(const Timer&) = delete;
    Timer& operator=(const Timer&) = delete;

    /// Calls `expired` once after `delay`; what was set before is forgotten.
    virtual void Start(std::chrono::milliseconds delay, std::function<void()> expired) = 0;
    virtual void Cancel() = 0;

protected:
    Timer() = default;
};

/// What became of an attempt to connect.
struct Connection {
    /// Null when there is none.
    std::unique_ptr<Channel> channel;
    /// Why there is none, for the log; empty when simply nobody listens.
    std::wstring failure;
    /// True when the engine is there and has no room for another front end now.
    bool isBusy = false;
};

/// What an engine can do for a front end that has come.
enum class Room : std::int32_t {
    Free,
    /// The system gives this process no more handles: the connection lasts only until the callback returns.
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

    /// Takes the endpoint `name` and gives every front end of the same user that comes there to `onConnected`. An
    /// empty text; or why the place could not be taken, by another engine for one. Called once, without the lock.
    virtual std::wstring Listen(const std::string& name, OnConnected onConnected) = 0;

    /// Connects to the engine of the same user that listens at `name`. May wait a moment for a busy one. Called without
    /// the lock.
    virtual Connection Connect(const std::string& name) = 0;

    /// Does the network's work until `Stop` is called; this is what its thread runs.
    virtual void Run() = 0;
    virtual void Stop() = 0;

protected:
    Network() = default;

private:
    std::mutex lock;
};

/// The system's own network: Unix domain sockets, named pipes. `log` is told what went wrong with nobody to tell; any
/// thread calls it.
std::unique_ptr<Network> MakeLocalNetwork(Network::Log log);

/// The native path of the socket or pipe where both ends meet under `name`, for people.
std::wstring LocalPlace(const std::string& name);

} // namespace local_socket
