#include "controller_web/http/beast/Connection.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

#include "CommonControllerLib/ControllerLogManager.h"
#include "controller_web/http/ErrorResponse.h"

namespace web {
namespace {

constexpr std::size_t readSize = std::size_t{64} << 10;
/// So that a client that reads nothing is noticed soon.
constexpr int sendBufferSize = 256 << 10;
/// How much of a refused request is read.
constexpr std::size_t lingerSize = std::size_t{4} << 20;

std::string Text(const http::fields& fields, http::field field) {
    const auto value = fields[field];
    return {value.data(), value.size()};
}

std::vector<std::string> Texts(const http::fields& fields, http::field field) {
    std::vector<std::string> texts;
    const auto [first, last] = fields.equal_range(field);
    std::transform(first, last, std::back_inserter(texts), [](const auto& entry) {
        const auto value = entry.value();
        return std::string(value.data(), value.size());
    });
    return texts;
}

template <typename Body>
RequestHead HeadOf(const http::request<Body>& request) {
    RequestHead head;
    head.method = {request.method_string().data(), request.method_string().size()};
    head.target = {request.target().data(), request.target().size()};
    head.hosts = Texts(request, http::field::host);
    head.origins = Texts(request, http::field::origin);
    const auto fetchSite = request["Sec-Fetch-Site"];
    head.fetchSite = {fetchSite.data(), fetchSite.size()};
    head.cookie = Text(request, http::field::cookie);
    head.contentType = Text(request, http::field::content_type);
    head.range = Text(request, http::field::range);
    head.ifNoneMatch = Text(request, http::field::if_none_match);
    const auto lastEventId = request["Last-Event-ID"];
    head.lastEventId = {lastEventId.data(), lastEventId.size()};
    head.acceptEncoding = Text(request, http::field::accept_encoding);
    return head;
}

/// Errors of the library's parser: what the client sent is no request.
bool IsBadRequest(const error_code& error) {
    return error.category() == make_error_code(http::error::bad_method).category() &&
           error != http::error::end_of_stream && error != http::error::partial_message;
}

/// Counts something for the time of its life.
class CountedWhile {
public:
    CountedWhile(std::size_t& counter, std::size_t amount) : count(counter), added(amount) { count += added; }
    ~CountedWhile() { count -= added; }
    CountedWhile(const CountedWhile&) = delete;
    CountedWhile& operator=(const CountedWhile&) = delete;

private:
    std::size_t& count;
    const std::size_t added;
};

constexpr auto cannotStore = boost::system::errc::io_error;

error_code ErrorOfStoring(const platform::Error& result) {
    if (!result) {
        ControllerLogManager::WarnLog(L"A file that a browser sends cannot be stored: " + result.Text());
        return make_error_code(cannotStore);
    }
    return {};
}

std::optional<Response> AnswerTo(const error_code& error) {
    if (error == http::error::header_limit || error == http::error::buffer_overflow) {
        return ErrorResponse(431, "header_too_large", "The headers of the request are too large.");
    }
    if (error == http::error::body_limit) {
        return ErrorResponse(413, "content_too_large", "The content of the request is too large.");
    }
    if (error == cannotStore) {
        return ErrorResponse(500, "internal_error", "The file cannot be stored; the log says why.");
    }
    return IsBadRequest(error) ? std::optional(ErrorResponse(400, "bad_request", "This is no request of HTTP/1.1."))
                               : std::nullopt;
}

} // namespace

Connection::Connection(tcp::socket socket, ServerContext& serverContext)
    : context(serverContext), stream(std::move(socket)), buffer(context.limits.header + readSize),
      news(std::make_shared<asio::steady_timer>(context.loop)) {}

asio::awaitable<void> Connection::Run() {
    error_code ignored;
    stream.socket().set_option(tcp::no_delay(true), ignored);
    stream.socket().set_option(asio::socket_base::send_buffer_size(sendBufferSize), ignored);
    bool goesOn = true;
    while (goesOn && !context.isStopping) {
        goesOn = co_await ServeRequest();
    }
    Close();
}

void Connection::EndSoon() {
    news->cancel();
    if (isIdle) {
        Close();
    }
}

void Connection::Close() {
    error_code ignored;
    stream.socket().shutdown(tcp::socket::shutdown_both, ignored);
    stream.close();
    news->cancel();
    if (reading != nullptr) {
        reading->Cancel();
    }
}

asio::awaitable<bool> Connection::ServeRequest() {
    const bool hasRequest = co_await AwaitRequest();
    if (!hasRequest) {
        co_return false;
    }
    Parser parser;
    parser.header_limit(context.limits.header);
    parser.body_limit(Site::uploadLimit);
    stream.expires_after(context.limits.headerTime);
    error_code error;
    co_await http::async_read_header(stream, buffer, parser, Into(error));
    if (error) {
        co_return co_await Refuse(error);
    }
    Admission admission = context.site.Admit(HeadOf(parser.get()));
    if (admission.answer) {
        co_return co_await Answer(parser, std::move(*admission.answer), parser.is_done());
    }
    co_return co_await Serve(parser, std::move(admission));
}

asio::awaitable<bool> Connection::Serve(Parser& parser, Admission admission) {
    const CountedWhile counted(context.uploads, admission.isUpload ? 1 : 0);
    if (context.uploads > context.limits.uploads) {
        Response refusal = ErrorResponse(429, "too_many_requests", "Too many files arrive at once. Try again later.");
        co_return co_await Answer(parser, std::move(refusal), parser.is_done());
    }
    const error_code error = co_await ReadBody(parser, admission);
    if (error) {
        co_return co_await Refuse(error);
    }
    admission.request.body = beast::buffers_to_string(parser.get().body().data());
    Response response = co_await CallHandler(std::move(admission.request));
    co_return co_await Answer(parser, std::move(response), true);
}

/// Waits for the first bytes of a request, unless the client has sent it together with the one before.
asio::awaitable<bool> Connection::AwaitRequest() {
    if (buffer.size() > 0) {
        co_return true;
    }
    isIdle = true;
    stream.expires_after(context.limits.idle);
    error_code error;
    const std::size_t count = co_await stream.async_read_some(buffer.prepare(4096), Into(error));
    buffer.commit(count);
    isIdle = false;
    co_return !error && !context.isStopping;
}

asio::awaitable<bool> Connection::Refuse(const error_code& error) {
    auto answer = AnswerTo(error);
    if (answer) {
        Form form;
        const bool isWritten = co_await Write(std::move(*answer), form);
        if (isWritten) {
            co_await Linger();
        }
    }
    co_return false;
}

/// The content of a request that was refused by its headers is not read, so the connection ends.
asio::awaitable<bool> Connection::Answer(Parser& parser, Response response, bool isBodyRead) {
    Form form;
    form.isHead = parser.get().method() == http::verb::head;
    form.hasChunks = parser.get().version() >= 11;
    form.isKept = isBodyRead && parser.get().keep_alive() && !context.isStopping;
    const bool isWritten = co_await Write(std::move(response), form);
    if (isWritten && !isBodyRead) {
        co_await Linger();
    }
    co_return isWritten&& form.isKept;
}

asio::awaitable<error_code> Connection::ReadBody(Parser& parser, Admission& admission) {
    // The parser has compared an announced length with the largest of the limits only.
    if (parser.content_length().value_or(0) > admission.bodyLimit) {
        co_return make_error_code(http::error::body_limit);
    }
    error_code error = co_await CreateFile(admission);
    if (!error) {
        error = co_await Continue(parser);
    }
    parser.body_limit(admission.bodyLimit);
    while (!error && !parser.is_done()) {
        stream.expires_after(context.limits.bodyTime);
        co_await http::async_read_some(stream, buffer, parser, Into(error));
        if (!error && admission.isUpload) {
            error = co_await Store(parser.get().body(), *admission.request.file);
        }
    }
    co_return error;
}

asio::awaitable<error_code> Connection::CreateFile(Admission& admission) {
    if (!admission.isUpload) {
        co_return error_code();
    }
    admission.request.file = std::make_shared<ReceivedFile>();
    co_return co_await OnWorker([this, &file = *admission.request.file] {
        return ErrorOfStoring(file.Create(context.site.UploadDirectory()));
    });
}

/// What has arrived is in memory only until it is stored.
asio::awaitable<error_code> Connection::Store(beast::flat_buffer& arrived, ReceivedFile& file) {
    const error_code error = co_await OnWorker([&] {
        return ErrorOfStoring(file.Append({static_cast<const char*>(arrived.data().data()), arrived.size()}));
    });
    arrived.clear();
    co_return error;
}

/// Some clients send the content only when they are told to.
asio::awaitable<error_code> Connection::Continue(const Parser& parser) {
    error_code error;
    if (!parser.is_done() && beast::iequals(parser.get()[http::field::expect], "100-continue")) {
        static constexpr std::string_view line = "HTTP/1.1 100 Continue\r\n\r\n";
        stream.expires_after(context.limits.writeTime);
        co_await asio::async_write(stream, asio::buffer(line), Into(error));
    }
    co_return error;
}

/// A connection that is closed with unread bytes is reset, which could destroy the answer.
asio::awaitable<void> Connection::Linger() {
    error_code error;
    stream.socket().shutdown(tcp::socket::shutdown_send, error);
    stream.expires_after(context.limits.lingerTime);
    std::vector<char> discarded(readSize);
    for (std::size_t total = 0; !error && total < lingerSize && !context.isStopping;) {
        total += co_await stream.async_read_some(asio::buffer(discarded), Into(error));
    }
}

asio::awaitable<Response> Connection::CallHandler(Request request) {
    co_return co_await OnWorker([&] { return context.site.Handle(request); });
}

} // namespace web
