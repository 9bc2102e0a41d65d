#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace test_support {

/// An answer as it was received.
struct RawAnswer {
    /// 0: the connection ended before a whole header.
    unsigned status = 0;
    /// With the status line.
    std::string header;
    /// As announced by its length, joined from its chunks, or up to the end of the connection.
    std::string body;
    /// True if the body had the announced length or its last chunk.
    bool isComplete = false;

    /// The value of a header; empty if it is missing.
    std::string Header(std::string_view name) const;
};

/// A client that sends and receives bytes as a test wants them. Its calls block; `Deadline` ends those that hang.
class RawClient {
public:
    explicit RawClient(std::uint16_t port);
    ~RawClient();
    RawClient(const RawClient&) = delete;
    RawClient& operator=(const RawClient&) = delete;

    /// Sends all bytes; false if the server has closed the connection.
    bool Send(std::string_view bytes);

    /// Sends no more; the server sees the end of the connection.
    void EndSending();

    /// Receives one answer. `hasBody`: false after HEAD.
    RawAnswer Receive(bool hasBody = true);

    /// Receives up to and with `mark`, or up to the end of the connection.
    std::string ReceiveUntil(std::string_view mark);

    /// Receives until the server ends the connection.
    std::string ReceiveRest();

private:
    bool ReceiveMore();
    std::string Take(std::size_t count);
    std::string TakeChunks(bool& isComplete);

    struct Connection;
    std::unique_ptr<Connection> connection;
    /// Received and not yet taken.
    std::string received;
};

} // namespace test_support
