#include "controller_web/http/beast/Connection.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>
#include <vector>

#include "controller_web/http/ErrorResponse.h"

namespace web {
namespace {

/// Each block of a response has the whole write timeout.
constexpr std::size_t blockSize = std::size_t{256} << 10;
constexpr std::string_view eventStream = "text/event-stream";
constexpr std::string_view heartbeat = ": \n\n";

/// The length of a body that is known before it is sent.
std::optional<std::uint64_t> LengthOf(const Response& response) {
    if (const auto* const text = std::get_if<Response::Text>(&response.body)) {
        return *text ? (*text)->size() : 0;
    }
    const auto* const content = std::get_if<std::unique_ptr<ContentReader>>(&response.body);
    return content ? (*content)->Size() : std::nullopt;
}

bool HasBody(const Response& response) {
    return response.status != 204 && response.status != 304;
}

bool IsEventStream(const Response& response) {
    return std::any_of(response.headers.begin(), response.headers.end(), [](const auto& header) {
        return header.first == "Content-Type" && header.second.starts_with(eventStream);
    });
}

http::response<http::empty_body> HeaderOf(const Response& response, bool isKept, bool hasChunks) {
    http::response<http::empty_body> header;
    header.result(response.status);
    for (const auto& [name, value] : response.headers) {
        header.insert(name, value);
    }
    header.keep_alive(isKept);
    const auto length = LengthOf(response);
    if (HasBody(response) && length) {
        header.content_length(*length);
    } else if (HasBody(response) && hasChunks) {
        header.chunked(true);
    }
    return header;
}

} // namespace

asio::awaitable<bool> Connection::Write(Response response, Form& form) {
    const bool isFeed = std::holds_alternative<std::unique_ptr<EventFeed>>(response.body);
    if (isFeed && context.feeds >= context.limits.feeds) {
        response = ErrorResponse(503, "too_many_streams", "Too many pages are open.");
    }
    Secure(response);
    // A feed may have ended because its client has gone, and a body without length or chunks ends with the connection.
    const bool endsConnection = isFeed || (!LengthOf(response) && !form.hasChunks);
    form.isKept = form.isKept && !endsConnection;
    bool isComplete = co_await WriteHeader(response, form);
    if (isComplete && !form.isHead && HasBody(response)) {
        isComplete = co_await WriteBody(response, form);
    }
    co_return isComplete;
}

asio::awaitable<bool> Connection::WriteHeader(const Response& response, Form form) {
    auto header = HeaderOf(response, form.isKept, form.hasChunks);
    http::response_serializer<http::empty_body> serializer(header);
    stream.expires_after(context.limits.writeTime);
    error_code error;
    co_await http::async_write_header(stream, serializer, Into(error));
    co_return !error;
}

asio::awaitable<bool> Connection::WriteBody(Response& response, Form form) {
    if (const auto* const text = std::get_if<Response::Text>(&response.body)) {
        const std::string_view bytes = *text ? std::string_view(**text) : std::string_view();
        co_return co_await WriteText(bytes);
    }
    if (const auto* const content = std::get_if<std::unique_ptr<ContentReader>>(&response.body)) {
        form.hasChunks = form.hasChunks && !(*content)->Size();
        co_return co_await WriteContent(**content, form);
    }
    co_return co_await WriteFeed(*std::get<std::unique_ptr<EventFeed>>(response.body), IsEventStream(response), form);
}

asio::awaitable<bool> Connection::WriteText(std::string_view text) {
    Form form;
    form.hasChunks = false;
    bool isWritten = true;
    while (isWritten && !text.empty()) {
        const std::string_view block = text.substr(0, blockSize);
        isWritten = co_await WriteBlock(block, form);
        text.remove_prefix(block.size());
    }
    co_return isWritten;
}

/// Content that cannot be read, or is shorter or longer than announced, ends the connection, so that the client sees
/// that it is not complete.
asio::awaitable<bool> Connection::WriteContent(ContentReader& content, Form form) {
    const std::optional<std::uint64_t> size = content.Size();
    std::vector<char> block(blockSize);
    std::uint64_t sent = 0;
    std::optional<std::size_t> count = co_await ReadContent(content, block);
    bool isSent = true;
    while (isSent && count.value_or(0) > 0 && sent + *count <= size.value_or(sent + *count)) {
        sent += *count;
        const std::string_view bytes(block.data(), *count);
        isSent = co_await WriteBlock(bytes, form);
        count = co_await ReadContent(content, block);
    }
    if (!isSent || count != std::size_t{0} || sent != size.value_or(sent)) {
        co_return false;
    }
    co_return co_await WriteEnd(form);
}

asio::awaitable<std::optional<std::size_t>> Connection::ReadContent(ContentReader& content, std::span<char> block) {
    reading = &content;
    const auto count = co_await OnWorker([&content, block] { return content.Read(block); });
    reading = nullptr;
    co_return count;
}

asio::awaitable<bool> Connection::WriteFeed(EventFeed& feed, bool hasHeartbeat, Form form) {
    error_code error;
    feed.OnNews([&loop = context.loop, timer = news] { asio::post(loop, [timer] { timer->cancel(); }); });
    ++context.feeds;
    asio::co_spawn(
        context.loop, [self = shared_from_this()] { return self->WatchPeer(); }, asio::detached);
    bool isSent = co_await WriteNews(feed, form);
    while (isSent && !feed.IsAtEnd() && !context.isStopping && !isPeerGone) {
        news->expires_after(context.limits.heartbeat);
        co_await news->async_wait(Into(error));
        if (!error && hasHeartbeat) {
            isSent = co_await WriteBlock(heartbeat, form);
        } else {
            isSent = co_await WriteNews(feed, form);
        }
    }
    --context.feeds;
    if (isSent && !isPeerGone) {
        isSent = co_await WriteEnd(form);
    }
    co_return isSent;
}

asio::awaitable<bool> Connection::WriteNews(EventFeed& feed, Form form) {
    bool isSent = true;
    auto text = feed.Next();
    while (text && isSent && !context.isStopping && !isPeerGone) {
        // An empty chunk would be the last one.
        if (!text->empty()) {
            isSent = co_await WriteBlock(*text, form);
        }
        text = feed.Next();
    }
    co_return isSent;
}

asio::awaitable<bool> Connection::WriteBlock(std::string_view block, Form form) {
    stream.expires_after(context.limits.writeTime);
    error_code error;
    const asio::const_buffer bytes(block.data(), block.size());
    if (form.hasChunks) {
        co_await asio::async_write(stream, http::make_chunk(bytes), Into(error));
    } else {
        co_await asio::async_write(stream, bytes, Into(error));
    }
    co_return !error;
}

asio::awaitable<bool> Connection::WriteEnd(Form form) {
    if (!form.hasChunks) {
        co_return true;
    }
    stream.expires_after(context.limits.writeTime);
    error_code error;
    co_await asio::async_write(stream, http::make_chunk_last(), Into(error));
    co_return !error;
}

/// Notices that the client of a feed has gone, although there is nothing to write. What it sends is not read as a
/// request: the connection ends with the feed.
asio::awaitable<void> Connection::WatchPeer() {
    stream.expires_never();
    std::array<char, 1024> discarded{};
    error_code error;
    for (std::size_t total = 0; !error && total < blockSize;) {
        total += co_await stream.async_read_some(asio::buffer(discarded), Into(error));
    }
    isPeerGone = true;
    news->cancel();
}

} // namespace web
