#include "kit/web/ServerFixture.h"

#include <algorithm>
#include <array>
#include <utility>

#include "controller_web/http/ErrorResponse.h"
#include "platform/files/Directory.h"
#include "platform/files/FileSystem.h"

namespace {

constexpr std::array<web::Asset, 1> page = {{{"index.html", "<p>the page", "", "1a"}}};

class GivenContent final : public web::ContentReader {
public:
    GivenContent(std::string contentBytes, std::optional<std::uint64_t> announcedSize, bool failsAtEnd)
        : bytes(std::move(contentBytes)), size(announcedSize), fails(failsAtEnd) {}

    std::optional<std::uint64_t> Size() const override { return size; }

    std::optional<std::size_t> Read(std::span<char> block) override {
        const std::size_t count = bytes.copy(block.data(), block.size(), place);
        place += count;
        return count == 0 && fails ? std::nullopt : std::optional(count);
    }

private:
    std::string bytes;
    std::optional<std::uint64_t> size;
    bool fails;
    std::size_t place = 0;
};

} // namespace

class ServerFixture::CallingHandler final : public web::Handler {
public:
    explicit CallingHandler(ServerFixture& serverFixture) : fixture(serverFixture) {}
    web::Response Handle(const web::Request& request) override {
        ++fixture.calls;
        return fixture.answer(request);
    }

private:
    ServerFixture& fixture;
};

ServerFixture::ServerFixture()
    : answer([](const web::Request& request) { return web::TextResponse(200, "text/plain", request.body); }) {}

ServerFixture::~ServerFixture() {
    Stop();
}

void ServerFixture::Start() {
    handler = std::make_unique<CallingHandler>(*this);
    server = std::make_unique<web::Server>(limits, acceptsPeer);
    ASSERT_TRUE(server->Listen(0));
    port = server->Port();
    const auto now = [] { return std::int64_t{1'000'000}; };
    const std::wstring links = directory / L"links";
    site.emplace(web::SiteOptions{port, {}, false, links, arriving, now}, web::Assets(page), *handler);
    thread = std::thread([this] { server->Run(*site); });
    std::string secret;
    ASSERT_TRUE(web::OneTimeLinks(links, now).Make(secret));
    const std::string header = Ask(RequestOfStranger("GET", "/login?token=" + secret)).Header("Set-Cookie");
    cookie = header.substr(0, header.find(';'));
    ASSERT_NE(cookie, "");
}

void ServerFixture::Stop() {
    if (thread.joinable()) {
        server->Stop();
        thread.join();
    }
}

std::string ServerFixture::RequestOfStranger(const std::string& method, const std::string& target,
                                             const std::string& moreHeaders) const {
    return method + " " + target + " HTTP/1.1\r\nHost: " + Host() + "\r\n" + moreHeaders + "\r\n";
}

std::string ServerFixture::Request(const std::string& method, const std::string& target, const std::string& moreHeaders,
                                   const std::string& body) const {
    std::string headers = "Cookie: " + cookie + "\r\n" + moreHeaders;
    if (method != "GET" && method != "HEAD") {
        headers += "Origin: http://" + Host() + "\r\nContent-Type: application/json\r\n";
    }
    if (!body.empty()) {
        headers += "Content-Length: " + std::to_string(body.size()) + "\r\n";
    }
    return RequestOfStranger(method, target, headers) + body;
}

std::vector<std::uint64_t> ServerFixture::SizesOfArriving() const {
    std::vector<platform::DirectoryEntry> entries;
    std::vector<std::uint64_t> sizes;
    // There is no directory before the first upload.
    (void)platform::ListDirectory(arriving, entries);
    for (const platform::DirectoryEntry& entry : entries) {
        if (const auto stamp = platform::StampOf(arriving + L"\\" + entry.name)) {
            sizes.push_back(stamp->size);
        }
    }
    return sizes;
}

test_support::RawAnswer ServerFixture::Ask(const std::string& request) const {
    test_support::RawClient client(port);
    (void)client.Send(request);
    return client.Receive();
}

std::unique_ptr<web::ContentReader> ContentOf(std::string bytes, std::optional<std::uint64_t> size, bool fails) {
    return std::make_unique<GivenContent>(std::move(bytes), size, fails);
}
