#pragma once

#include <cstdint>

#include <asio/io_context.hpp>
#include <asio/ip/tcp.hpp>

namespace test_support {

/// Both ends of a TCP connection within this process.
class LoopbackConnection {
public:
    LoopbackConnection() : acceptor(context, {asio::ip::address_v4::loopback(), 0}), client(context), server(context) {
        client.connect(acceptor.local_endpoint());
        acceptor.accept(server);
    }
    std::uint16_t ServerPort() const { return acceptor.local_endpoint().port(); }
    std::uint16_t ClientPort() const { return client.local_endpoint().port(); }

private:
    asio::io_context context;
    asio::ip::tcp::acceptor acceptor;
    asio::ip::tcp::socket client;
    asio::ip::tcp::socket server;
};

} // namespace test_support
