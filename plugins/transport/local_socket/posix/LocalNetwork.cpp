#include <cerrno>
#include <chrono>
#include <utility>

#include <asio/local/stream_protocol.hpp>

#include <fcntl.h>
#include <sys/socket.h>

#include "platform/system/Error.h"
#include "platform/system/posix/Descriptor.h"
#include "text/Text.h"
#include "transport/local_socket/AsioNetwork.h"
#include "transport/local_socket/Limits.h"
#include "transport/local_socket/posix/EndpointAddress.h"

namespace local_socket {
namespace {

using Protocol = asio::local::stream_protocol;

class LocalNetwork final : public AsioNetwork {
public:
    explicit LocalNetwork(Log logFunction) : log(std::move(logFunction)) {}

    std::wstring Listen(const std::string& name, OnConnected connected) override {
        OpenedSocket opened = place.Take(name);
        if (opened.failure.empty()) {
            const std::lock_guard<std::mutex> guard(Lock());
            onConnected = std::move(connected);
            spare = SpareDescriptor();
            ListenOn(std::move(opened.socket));
            look->Start(lookInterval, [this] { LookAfterPlace(); });
        }
        return std::move(opened.failure);
    }

    void Run() override {
        AsioNetwork::Run();
        place.Leave();
    }

    Connection Connect(const std::string& name) override {
        OpenedSocket opened = ConnectTo(name, busyTimeout);
        return {opened.socket ? ChannelOver(std::move(opened.socket)) : nullptr, std::move(opened.failure),
                opened.isBusy};
    }

private:
    std::unique_ptr<Channel> ChannelOver(platform::OwnedHandle socket) {
        Protocol::socket stream(context);
        stream.assign(Protocol(), platform::DescriptorOf(socket.Get()));
        socket.Release();
        return std::make_unique<AsioChannel<Protocol::socket>>(std::move(stream), Lock());
    }

    void ListenOn(platform::OwnedHandle socket) {
        acceptor.assign(Protocol(), platform::DescriptorOf(socket.Release()));
        AwaitFrontEnds();
    }

    /// Listens again if the socket was removed: a logout removes the run-time directory, and cleaners remove old
    /// temporary files. Does not affect open connections.
    void LookAfterPlace() {
        OpenedSocket opened = place.TakeAgainIfLost();
        if (opened.socket) {
            asio::error_code ignored;
            acceptor.close(ignored);
            retry->Cancel();
            log(L"The socket was gone and is made again.");
            ListenOn(std::move(opened.socket));
        }
        if (!opened.failure.empty() && opened.failure != lastFailure) {
            log(L"The socket is gone and cannot be made again: " + opened.failure);
        }
        lastFailure = std::move(opened.failure);
        look->Start(lookInterval, [this] { LookAfterPlace(); });
    }

    void AwaitFrontEnds() {
        acceptor.async_wait(Protocol::acceptor::wait_read, [this](const asio::error_code& error) {
            const std::lock_guard<std::mutex> guard(Lock());
            if (!error) {
                AcceptOne();
            }
        });
    }

    /// Accepts one client at a time, so that a flood of clients does not starve other work.
    void AcceptOne() {
        Accepted accepted = Accept();
        if (accepted.socket) {
            TakeFrontEnd(std::move(accepted.socket), Room::Free);
        } else if (accepted.error.kind == platform::ErrorKind::TooManyOpen) {
            accepted = TurnOneAway();
        }
        if (!accepted.error) {
            log(L"Cannot take a front end: " + accepted.error.Text());
            retry->Start(retryDelay, [this] { AwaitFrontEnds(); });
            return;
        }
        AwaitFrontEnds();
    }

    /// A client's socket, or the error; no error if no client waits any more.
    struct Accepted {
        platform::OwnedHandle socket;
        platform::Error error;
    };

    /// Does not use Asio's accept: its sockets would be inherited by every started process.
    Accepted Accept() {
        const int accepted = ::accept4(acceptor.native_handle(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
        if (accepted >= 0) {
            return {platform::OwnedHandle(platform::HandleOf(accepted)), {}};
        }
        const bool isGone = errno == EAGAIN || errno == EINTR || errno == ECONNABORTED;
        return {{}, isGone ? platform::Error() : platform::LastError()};
    }

    /// Uses the spare descriptor to tell the client why it cannot be served.
    Accepted TurnOneAway() {
        spare = {};
        Accepted accepted = Accept();
        if (accepted.socket) {
            TakeFrontEnd(std::move(accepted.socket), Room::None);
        }
        spare = SpareDescriptor();
        return accepted;
    }

    /// Returns null if the system has no descriptor left; then clients wait until one is free.
    static platform::OwnedHandle SpareDescriptor() {
        const int descriptor = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
        return descriptor < 0 ? platform::OwnedHandle() : platform::OwnedHandle(platform::HandleOf(descriptor));
    }

    void TakeFrontEnd(platform::OwnedHandle socket, Room room) {
        if (IsSameUser(platform::DescriptorOf(socket.Get()))) {
            onConnected(ChannelOver(std::move(socket)), room);
        } else {
            log(L"A program of another user was refused as front end.");
        }
    }

    /// There is no notification for a socket whose directory was removed. A check takes some microseconds.
    static constexpr std::chrono::milliseconds lookInterval{1000};

    const Log log;
    OnConnected onConnected;
    ListeningPlace place;
    /// The failure of the last check of the endpoint.
    std::wstring lastFailure;
    /// Kept open, and closed to accept a client when no other descriptor is left.
    platform::OwnedHandle spare;
    Protocol::acceptor acceptor{context};
    const std::unique_ptr<Timer> retry = MakeTimer();
    const std::unique_ptr<Timer> look = MakeTimer();
};

} // namespace

std::wstring LocalPlace(const std::string& name) {
    return text::FromUtf8(SocketPathOf(name));
}

std::unique_ptr<Network> MakeLocalNetwork(Network::Log log) {
    return std::make_unique<LocalNetwork>(std::move(log));
}

} // namespace local_socket
