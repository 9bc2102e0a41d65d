#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace web {

/// A body that is read while it is sent, for example a file or an archive.
class ContentReader {
public:
    virtual ~ContentReader() = default;
    /// The bytes that will be read in total; without a value the body is sent in chunks.
    virtual std::optional<std::uint64_t> Size() const = 0;
    /// Fills `block` from its start and returns the number of bytes; 0 is the end. Without a value: reading has failed,
    /// and the connection is closed. Threads: any, one call at a time; may block.
    virtual std::optional<std::size_t> Read(std::span<char> block) = 0;

    /// Makes a blocked and every later `Read` return the end: the client has gone. Threads: any, also during `Read`.
    virtual void Cancel() {}
};

/// A body whose texts come with time: the server-sent events of one client, or the output of a running job.
class EventFeed {
public:
    virtual ~EventFeed() = default;
    /// The next text, for server-sent events in the form of "text/event-stream"; null if there is none now. Threads:
    /// that of the server.
    virtual std::shared_ptr<const std::string> Next() = 0;
    /// True if `Next` will have no further text; then the body ends. Threads: that of the server.
    virtual bool IsAtEnd() const { return false; }
    /// Has `wake` called, on any thread, each time when `Next` may have a text again. Not called after the destruction
    /// of this object.
    virtual void OnNews(std::function<void()> wake) = 0;
};

/// The server adds the headers of security, length and connection, and comments as heartbeats to a feed of the type
/// "text/event-stream".
struct Response {
    using Text = std::shared_ptr<const std::string>;
    using Body = std::variant<Text, std::unique_ptr<ContentReader>, std::unique_ptr<EventFeed>>;

    unsigned status = 200;
    /// Without line breaks and other control characters.
    std::vector<std::pair<std::string, std::string>> headers;
    /// A null text is an empty body.
    Body body;
};

} // namespace web
