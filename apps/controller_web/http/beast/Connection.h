#pragma once

#include "controller_web/http/Server.h"
#include "controller_web/http/beast/Asio.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <type_traits>

namespace web {

/// What all connections of a server share. Threads: that of the server.
struct ServerContext {
    asio::io_context& loop;
    asio::thread_pool& workers;
    const ServerLimits& limits;
    Site& site;
    bool isStopping = false;
    std::size_t feeds = 0;
    std::size_t uploads = 0;
};

/// One client: reads its requests and writes the answers, one after the other. Threads: that of the server.
class Connection : public std::enable_shared_from_this<Connection> {
public:
    Connection(tcp::socket socket, ServerContext& serverContext);

    /// Serves requests until the client, a timeout or the server ends the connection.
    asio::awaitable<void> Run();

    /// The server is stopping: a connection without a request ends, and so does a feed.
    void EndSoon();

    /// Ends the connection now.
    void Close();

private:
    /// Its body does not reserve the size that a client announces.
    using Body = http::basic_dynamic_body<beast::flat_buffer>;
    using Parser = http::request_parser<Body>;

    // Each returns true if the connection can go on.
    asio::awaitable<bool> ServeRequest();
    asio::awaitable<bool> AwaitRequest();
    asio::awaitable<bool> Answer(Parser& parser, Response response, bool isBodyRead);
    asio::awaitable<bool> Refuse(const error_code& error);

    asio::awaitable<bool> Serve(Parser& parser, Admission admission);
    asio::awaitable<error_code> ReadBody(Parser& parser, Admission& admission);
    asio::awaitable<error_code> CreateFile(Admission& admission);
    asio::awaitable<error_code> Store(beast::flat_buffer& arrived, ReceivedFile& file);
    asio::awaitable<error_code> Continue(const Parser& parser);
    asio::awaitable<void> Linger();
    asio::awaitable<Response> CallHandler(Request request);
    /// Calls a function that may block.
    template <typename Function>
    asio::awaitable<std::invoke_result_t<Function>> OnWorker(Function function) {
        co_return co_await asio::co_spawn(
            context.workers, [&function]() -> asio::awaitable<std::invoke_result_t<Function>> { co_return function(); },
            asio::use_awaitable);
    }

    // Write a response (ConnectionWriting.cpp). `isHead`: without its body.
    struct Form {
        bool isHead = false;
        bool isKept = false;
        /// HTTP/1.0 has no chunks: such a body ends with the connection.
        bool hasChunks = true;
    };
    /// A feed, and a body without length or chunks, end the connection; `form` is changed accordingly.
    asio::awaitable<bool> Write(Response response, Form& form);
    asio::awaitable<bool> WriteHeader(const Response& response, Form form);
    asio::awaitable<bool> WriteBody(Response& response, Form form);
    asio::awaitable<bool> WriteText(std::string_view text);
    asio::awaitable<bool> WriteContent(ContentReader& content, Form form);
    asio::awaitable<std::optional<std::size_t>> ReadContent(ContentReader& content, std::span<char> block);
    asio::awaitable<bool> WriteFeed(EventFeed& feed, bool hasHeartbeat, Form form);
    asio::awaitable<bool> WriteNews(EventFeed& feed, Form form);
    asio::awaitable<bool> WriteBlock(std::string_view block, Form form);
    asio::awaitable<bool> WriteEnd(Form form);
    asio::awaitable<void> WatchPeer();

    ServerContext& context;
    beast::tcp_stream stream;
    beast::flat_buffer buffer;
    /// Expires for heartbeats; cancelled when there are news for a feed.
    std::shared_ptr<asio::steady_timer> news;
    /// What is being read on a worker; null: nothing.
    ContentReader* reading = nullptr;
    bool isIdle = true;
    bool isPeerGone = false;
};

} // namespace web
