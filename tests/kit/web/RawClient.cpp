#include "kit/web/RawClient.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>

#include <asio/io_context.hpp>
#include <asio/ip/tcp.hpp>
#include <asio/write.hpp>

namespace test_support {
namespace {

constexpr std::string_view lineEnd = "\r\n";
constexpr std::string_view headerEnd = "\r\n\r\n";

std::size_t Number(std::string_view text, int base) {
    std::size_t number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number, base);
    return number;
}

} // namespace

struct RawClient::Connection {
    asio::io_context context;
    asio::ip::tcp::socket socket{context};
};

std::string RawAnswer::Header(std::string_view name) const {
    const std::size_t line = header.find(std::string(lineEnd) + std::string(name) + ": ");
    if (line == std::string::npos) {
        return {};
    }
    const std::size_t value = line + lineEnd.size() + name.size() + 2;
    return header.substr(value, header.find(lineEnd, value) - value);
}

RawClient::RawClient(std::uint16_t port) : connection(std::make_unique<Connection>()) {
    connection->socket.connect({asio::ip::address_v4::loopback(), port});
}

RawClient::~RawClient() = default;

bool RawClient::Send(std::string_view bytes) {
    asio::error_code error;
    asio::write(connection->socket, asio::buffer(bytes), error);
    return !error;
}

void RawClient::EndSending() {
    asio::error_code error;
    connection->socket.shutdown(asio::ip::tcp::socket::shutdown_send, error);
}

bool RawClient::ReceiveMore() {
    std::array<char, 65536> block{};
    asio::error_code error;
    const std::size_t count = connection->socket.read_some(asio::buffer(block), error);
    received.append(block.data(), count);
    return !error;
}

std::string RawClient::Take(std::size_t count) {
    while (received.size() < count && ReceiveMore()) {
    }
    std::string taken = received.substr(0, count);
    received.erase(0, taken.size());
    return taken;
}

std::string RawClient::ReceiveUntil(std::string_view mark) {
    std::size_t end = received.find(mark);
    while (end == std::string::npos && ReceiveMore()) {
        end = received.find(mark);
    }
    return Take(end == std::string::npos ? received.size() : end + mark.size());
}

std::string RawClient::ReceiveRest() {
    return Take(std::numeric_limits<std::size_t>::max());
}

std::string RawClient::TakeChunks(bool& isComplete) {
    std::string body;
    while (true) {
        const std::string line = ReceiveUntil(lineEnd);
        const std::size_t size = Number(line, 16);
        const std::string chunk = Take(size + lineEnd.size());
        isComplete = line.ends_with(lineEnd) && size == 0 && chunk == lineEnd;
        if (size == 0 || chunk.size() < size + lineEnd.size()) {
            return body + (size == 0 ? "" : chunk);
        }
        body += chunk.substr(0, size);
    }
}

RawAnswer RawClient::Receive(bool hasBody) {
    RawAnswer answer;
    answer.header = ReceiveUntil(headerEnd);
    if (!answer.header.ends_with(headerEnd)) {
        return answer;
    }
    answer.status = static_cast<unsigned>(Number(answer.header.substr(9, 3), 10));
    const std::string length = answer.Header("Content-Length");
    if (!hasBody || answer.status == 304 || answer.status < 200) {
        answer.isComplete = true;
    } else if (!length.empty()) {
        answer.body = Take(Number(length, 10));
        answer.isComplete = answer.body.size() == Number(length, 10);
    } else if (answer.Header("Transfer-Encoding") == "chunked") {
        answer.body = TakeChunks(answer.isComplete);
    } else {
        answer.body = ReceiveRest();
    }
    return answer;
}

} // namespace test_support
