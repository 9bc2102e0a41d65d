#include "controller_web/http/Server.h"

#include <exception>
#include <set>
#include <utility>

#include "CommonControllerLib/ControllerLogManager.h"
#include "controller_web/http/PortOptions.h"
#include "controller_web/http/beast/Connection.h"
#include "text/Text.h"

namespace web {
namespace {

constexpr std::chrono::milliseconds pauseWithoutDescriptors{100};

platform::Error ErrorOf(const error_code& error) {
    return error == asio::error::address_in_use ? platform::Error{platform::ErrorKind::InUse, error.value()}
                                                : platform::ErrorFromCode(error.value());
}

} // namespace

struct Server::State {
    State(const ServerLimits& serverLimits, PeerCheck check)
        : limits(serverLimits), acceptsPeer(std::move(check)), workers(limits.workers) {}

    void Bind(std::uint16_t port, error_code& error);
    asio::awaitable<void> Accept();
    bool Accepts(const tcp::socket& socket) const;
    void Serve(tcp::socket socket);
    asio::awaitable<void> Connect(std::shared_ptr<Connection> connection);
    void BeginStop();
    asio::awaitable<void> CloseAfterGrace();

    ServerLimits limits;
    PeerCheck acceptsPeer;
    asio::io_context loop{1};
    asio::thread_pool workers;
    tcp::acceptor acceptor{loop};
    asio::steady_timer grace{loop};
    std::unique_ptr<ServerContext> context;
    std::set<std::shared_ptr<Connection>> connections;
    bool isStopped = false;
};

Server::Server(const ServerLimits& limits, PeerCheck acceptsPeer)
    : state(std::make_unique<State>(limits, std::move(acceptsPeer))) {}

Server::~Server() = default;

platform::Error Server::Listen(std::uint16_t port) {
    error_code error;
    state->Bind(port, error);
    return error ? ErrorOf(error) : platform::Error();
}

void Server::State::Bind(std::uint16_t port, error_code& error) {
    acceptor.open(tcp::v4(), error);
    if (!error && !OwnPort(static_cast<std::uintptr_t>(acceptor.native_handle()))) {
        error = asio::error::no_permission;
    }
    if (!error) {
        acceptor.bind({asio::ip::address_v4::loopback(), port}, error);
    }
    if (!error) {
        acceptor.listen(asio::socket_base::max_listen_connections, error);
    }
}

std::uint16_t Server::Port() const {
    error_code error;
    return state->acceptor.local_endpoint(error).port();
}

void Server::Run(Site& site) {
    state->context.reset(new ServerContext{state->loop, state->workers, state->limits, site});
    asio::co_spawn(state->loop, state->Accept(), asio::detached);
    state->loop.run();
    state->workers.join();
}

void Server::Stop() {
    asio::post(state->loop, [this] { state->BeginStop(); });
}

asio::awaitable<void> Server::State::Accept() {
    while (!isStopped) {
        error_code error;
        tcp::socket socket = co_await acceptor.async_accept(Into(error));
        if (!error) {
            Serve(std::move(socket));
        } else if (!isStopped) {
            // There may be a descriptor again later.
            asio::steady_timer pause(loop, pauseWithoutDescriptors);
            co_await pause.async_wait(Into(error));
        }
    }
}

bool Server::State::Accepts(const tcp::socket& socket) const {
    if (connections.size() >= limits.connections) {
        return false;
    }
    error_code error;
    const std::uint16_t ownPort = socket.local_endpoint(error).port();
    const std::uint16_t peerPort = socket.remote_endpoint(error).port();
    return !acceptsPeer || (!error && acceptsPeer(ownPort, peerPort));
}

/// A connection that is not accepted is closed at once.
void Server::State::Serve(tcp::socket socket) {
    if (Accepts(socket)) {
        auto connection = std::make_shared<Connection>(std::move(socket), *context);
        connections.insert(connection);
        asio::co_spawn(loop, Connect(std::move(connection)), asio::detached);
    }
}

asio::awaitable<void> Server::State::Connect(std::shared_ptr<Connection> connection) {
    try {
        co_await connection->Run();
    } catch (const std::exception& failure) {
        // For example a lack of memory: it ends this connection only.
        ControllerLogManager::WarnLog(L"A connection of the web page has ended: " + text::FromUtf8(failure.what()));
    }
    connections.erase(connection);
    if (connections.empty()) {
        grace.cancel();
    }
}

void Server::State::BeginStop() {
    if (std::exchange(isStopped, true)) {
        return;
    }
    error_code ignored;
    acceptor.close(ignored);
    context->isStopping = true;
    for (const auto& connection : connections) {
        connection->EndSoon();
    }
    if (!connections.empty()) {
        asio::co_spawn(loop, CloseAfterGrace(), asio::detached);
    }
}

asio::awaitable<void> Server::State::CloseAfterGrace() {
    grace.expires_after(limits.stopTime);
    error_code error;
    co_await grace.async_wait(Into(error));
    for (const auto& connection : connections) {
        connection->Close();
    }
}

} // namespace web
