#include <optional>
#include <utility>

#include <asio/detail/winsock_init.hpp>
#include <asio/error.hpp>
#include <asio/windows/overlapped_ptr.hpp>
#include <asio/windows/stream_handle.hpp>

#include <windows.h>

#include "platform/system/Error.h"
#include "transport/local_socket/AsioNetwork.h"
#include "transport/local_socket/Limits.h"
#include "transport/local_socket/windows/EndpointAddress.h"

namespace local_socket {
namespace {

/// Prevents Asio from starting Windows Sockets, which is not allowed while a module is being loaded; pipes do not need
/// it. This object must be constructed before Asio's own static object.
[[gnu::init_priority(101)]] const asio::detail::winsock_init<>::manual withoutWindowsSockets;

using Stream = asio::windows::stream_handle;

class LocalNetwork final : public AsioNetwork {
public:
    explicit LocalNetwork(Log logFunction) : log(std::move(logFunction)) {}

    std::wstring Listen(const std::string& placeName, OnConnected connected) override {
        OpenedPipe opened = MakePipe(placeName, Instance::First);
        if (opened.pipe) {
            name = placeName;
            onConnected = std::move(connected);
            AwaitFrontEnd(std::move(opened.pipe));
        }
        return std::move(opened.failure);
    }

    Connection Connect(const std::string& placeName) override {
        OpenedPipe opened = OpenPipe(placeName, busyTimeout);
        return {opened.pipe ? ChannelOver(StreamOver(std::move(opened.pipe))) : nullptr, std::move(opened.failure),
                opened.isBusy};
    }

private:
    Stream StreamOver(platform::OwnedHandle pipe) {
        Stream stream(context);
        stream.assign(pipe.Get());
        pipe.Release();
        return stream;
    }

    std::unique_ptr<Channel> ChannelOver(Stream stream) {
        return std::make_unique<AsioChannel<Stream>>(std::move(stream), Lock());
    }

    void AwaitFrontEnd(platform::OwnedHandle pipe) {
        waiting = StreamOver(std::move(pipe));
        asio::windows::overlapped_ptr overlapped(context, [this](const asio::error_code& error, std::size_t) {
            const std::lock_guard<std::mutex> guard(Lock());
            TakeFrontEnd(error);
        });
        const BOOL isConnected = ConnectNamedPipe(waiting->native_handle(), overlapped.get());
        const DWORD code = isConnected != 0 ? DWORD{ERROR_PIPE_CONNECTED} : GetLastError();
        if (code == ERROR_IO_PENDING) {
            overlapped.release();
        } else {
            const DWORD failure = code == ERROR_PIPE_CONNECTED ? DWORD{ERROR_SUCCESS} : code;
            overlapped.complete(asio::error_code(static_cast<int>(failure), asio::error::get_system_category()), 0);
        }
    }

    /// Creates the next instance first: a client that connects at this moment must find one.
    void TakeFrontEnd(const asio::error_code& error) {
        std::optional<Stream> taken = std::exchange(waiting, std::nullopt);
        MakeNextEnd();
        if (!error) {
            onConnected(ChannelOver(*std::move(taken)), Room::Free);
        }
    }

    void MakeNextEnd() {
        OpenedPipe opened = MakePipe(name, Instance::Further);
        if (opened.pipe) {
            AwaitFrontEnd(std::move(opened.pipe));
        } else {
            log(L"Cannot take front ends: " + opened.failure);
            retry->Start(retryDelay, [this] { MakeNextEnd(); });
        }
    }

    const Log log;
    OnConnected onConnected;
    std::string name;
    /// The instance that waits for the next client.
    std::optional<Stream> waiting;
    const std::unique_ptr<Timer> retry = MakeTimer();
};

} // namespace

std::wstring LocalPlace(const std::string& name) {
    return PipePath(OwnUserSid(), name);
}

std::unique_ptr<Network> MakeLocalNetwork(Network::Log log) {
    return std::make_unique<LocalNetwork>(std::move(log));
}

} // namespace local_socket
