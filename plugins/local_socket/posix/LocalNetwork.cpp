#include <cerrno>
#include <utility>

#include <asio/local/stream_protocol.hpp>

#include <sys/socket.h>

#include "local_socket/AsioNetwork.h"
#include "local_socket/Limits.h"
#include "local_socket/posix/MeetingPlace.h"
#include "platform/Error.h"
#include "platform/posix/DescriptorHandle.h"

namespace local_socket {
namespace {

using Protocol = asio::local::stream_protocol;

class LocalNetwork final : public AsioNetwork {
public:
    explicit LocalNetwork(Log logFunction) : log(std::move(logFunction)) {}

    std::wstring Listen(const std::string& name, OnConnected connected) override {
        OpenedSocket opened = place.Take(name);
        if (opened.failure.empty()) {
            onConnected = std::move(connected);
            acceptor.assign(Protocol(), platform::DescriptorOf(opened.socket.Release()));
            AwaitFrontEnds();
        }
        return std::move(opened.failure);
    }

    Connection Connect(const std::string& name) override {
        OpenedSocket opened = ConnectTo(name, busyPatience);
        return {opened.socket ? ChannelOver(std::move(opened.socket)) : nullptr, std::move(opened.failure)};
    }

private:
    std::unique_ptr<Channel> ChannelOver(platform::OwnedHandle socket) {
        Protocol::socket stream(context);
        stream.assign(Protocol(), platform::DescriptorOf(socket.Get()));
        socket.Release();
        return std::make_unique<AsioChannel<Protocol::socket>>(std::move(stream), Lock());
    }

    void AwaitFrontEnds() {
        acceptor.async_wait(Protocol::acceptor::wait_read, [this](const asio::error_code& error) {
            const std::lock_guard<std::mutex> guard(Lock());
            if (!error) {
                AcceptOne();
            }
        });
    }

    /// One at a time, so that those who come without end do not hold up the rest. Not Asio's own accept, whose sockets
    /// would be inherited by every process that is started.
    void AcceptOne() {
        const int accepted = ::accept4(acceptor.native_handle(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
        if (accepted >= 0) {
            TakeFrontEnd(platform::OwnedHandle(platform::HandleOf(accepted)));
        } else if (errno != EAGAIN && errno != EINTR && errno != ECONNABORTED) {
            log(L"Cannot take a front end: " + platform::LastError().Text());
            retry->Start(retryDelay, [this] { AwaitFrontEnds(); });
            return;
        }
        AwaitFrontEnds();
    }

    void TakeFrontEnd(platform::OwnedHandle socket) {
        if (IsSameUser(platform::DescriptorOf(socket.Get()))) {
            onConnected(ChannelOver(std::move(socket)));
        } else {
            log(L"A program of another user was refused as front end.");
        }
    }

    const Log log;
    OnConnected onConnected;
    ListeningPlace place;
    Protocol::acceptor acceptor{context};
    const std::unique_ptr<Timer> retry = MakeTimer();
};

} // namespace

std::unique_ptr<Network> MakeLocalNetwork(Network::Log log) {
    return std::make_unique<LocalNetwork>(std::move(log));
}

} // namespace local_socket
