#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "controller_web/http/ErrorResponse.h"
#include "controller_web/http/beast/Connection.h"
#include "fuzz/support/ByteSource.h"
#include "fuzz/support/Require.h"
#include "fuzz/support/Scratch.h"
#include "platform/files/Directory.h"

namespace {

using web::asio::ip::tcp;

constexpr std::uint16_t port = 8080;
/// Stands in inputs for the cookie of a browser that is signed in.
constexpr std::string_view sessionMark = "$SESSION";
constexpr std::size_t mostPieces = 64;

const std::wstring& ArrivingDirectory() {
    static const std::wstring directory = fuzz::Scratch() / L"arriving";
    return directory;
}

/// Checks what the server lets pass.
class CheckingHandler final : public web::Handler {
public:
    bool isSignedIn = false;

    web::Response Handle(const web::Request& request) override {
        fuzz::Require(isSignedIn, "without a session nothing is handled");
        fuzz::Require(!request.path.empty() && (request.path[0] == "api" || request.path[0] == "metrics"),
                      "only the paths of the interface are handled");
        fuzz::Require(request.body.size() <= web::Site::jsonLimit, "a content in memory is below its limit");
        fuzz::Require(request.file == nullptr || request.body.empty(), "an upload is in its file only");
        return web::TextResponse(200, "text/plain", std::to_string(request.body.size()));
    }
};

/// A server without network, whose only browser is signed in.
class SignedInSite {
public:
    SignedInSite()
        : site({port, {}, false, fuzz::Scratch() / L"links", ArrivingDirectory(), Now}, web::Assets({}), handler) {
        std::string secret;
        const web::OneTimeLinks links(fuzz::Scratch() / L"links", Now);
        fuzz::Require(static_cast<bool>(links.Make(secret)), "a link can be made");
        web::RequestHead head{"GET", "/login?token=" + secret};
        head.hosts = {"127.0.0.1:" + std::to_string(port)};
        const auto login = site.Admit(head).answer;
        fuzz::Require(login && login->status == 303 && login->headers.size() > 1, "the link signs in");
        const std::string& header = login->headers[1].second;
        cookie = header.substr(0, header.find(';'));
    }

    web::Site& Site() { return site; }
    void SetSignedIn(bool isSignedIn) { handler.isSignedIn = isSignedIn; }
    const std::string& Cookie() const { return cookie; }

private:
    static std::int64_t Now() { return 1'000'000; }

    CheckingHandler handler;
    web::Site site;
    std::string cookie;
};

/// The two ends of a connection, served by one thread.
struct Line {
    explicit Line(web::asio::io_context& loop) : browser(loop), server(loop) {
        tcp::acceptor acceptor(loop, {web::asio::ip::address_v4::loopback(), 0});
        browser.connect(acceptor.local_endpoint());
        server = acceptor.accept();
    }
    tcp::socket browser;
    tcp::socket server;
};

/// Sends the bytes in pieces, which the server reads one by one, and receives until the server ends the connection.
web::asio::awaitable<std::string> Exchange(tcp::socket& browser, std::string_view bytes, std::size_t pieceSize) {
    web::error_code error;
    for (std::size_t count = 0; !bytes.empty() && !error; ++count) {
        const std::string_view piece = bytes.substr(0, count < mostPieces ? pieceSize : bytes.size());
        co_await web::asio::async_write(browser, web::asio::buffer(piece), web::Into(error));
        bytes.remove_prefix(piece.size());
        co_await web::asio::post(browser.get_executor(), web::asio::use_awaitable);
    }
    browser.shutdown(tcp::socket::shutdown_send, error);
    std::string received;
    std::array<char, 16384> block{};
    for (error = {}; !error;) {
        received.append(block.data(), co_await browser.async_read_some(web::asio::buffer(block), web::Into(error)));
    }
    co_return received;
}

/// What the server answers to these bytes.
std::string AnswersTo(std::string_view bytes, std::size_t pieceSize, web::Site& site) {
    static web::asio::thread_pool workers(1);
    static const web::ServerLimits limits;
    web::asio::io_context loop{1};
    web::ServerContext context{loop, workers, limits, site};
    Line line(loop);
    const auto connection = std::make_shared<web::Connection>(std::move(line.server), context);
    std::string answers;
    web::asio::co_spawn(loop, connection->Run(), web::asio::detached);
    web::asio::co_spawn(loop, Exchange(line.browser, bytes, pieceSize),
                        [&answers](const std::exception_ptr&, std::string text) { answers = std::move(text); });
    loop.run();
    fuzz::Require(context.uploads == 0 && context.feeds == 0, "an ended connection counts no more");
    return answers;
}

std::string WithCookie(std::string_view input, const std::string& cookie) {
    std::string bytes(input);
    for (std::size_t place = bytes.find(sessionMark); place != std::string::npos; place = bytes.find(sessionMark)) {
        bytes.replace(place, sessionMark.size(), cookie);
    }
    return bytes;
}

} // namespace

/// Reads the input as the size of the pieces in which bytes arrive, and the bytes of one connection.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static SignedInSite server;
    fuzz::ByteSource source(fuzz::BytesOf(data, size));
    const std::size_t pieceSize = source.Byte();
    const std::string_view input = source.Bytes(size);
    server.SetSignedIn(input.find(sessionMark) != std::string_view::npos);
    const std::string bytes = WithCookie(input, server.Cookie());
    const std::string answers = AnswersTo(bytes, pieceSize == 0 ? bytes.size() : pieceSize, server.Site());
    fuzz::Require(answers.empty() || answers.starts_with("HTTP/1."), "an answer begins with its version");
    std::vector<platform::DirectoryEntry> left;
    // There is no directory before the first upload.
    (void)platform::ListDirectory(ArrivingDirectory(), left);
    fuzz::Require(left.empty(), "of an upload that nobody takes nothing is left");
    return 0;
}
