#pragma once

#include "controller_web/http/Response.h"

#include <functional>
#include <memory>
#include <string>
#include <thread>

namespace web {

/// The logs of running jobs for clients that follow them. Nothing tells that a file grows, so a thread looks at
/// intervals while there are such clients. Threads: any. Feeds may outlive this object; they then have no news.
class LogFeeds {
public:
    /// The most clients at a time.
    static constexpr std::size_t mostFeeds = 32;

    LogFeeds();
    ~LogFeeds();
    LogFeeds(const LogFeeds&) = delete;
    LogFeeds& operator=(const LogFeeds&) = delete;

    /// The content of a log from its beginning; it ends after `hasEnded` has returned true. The file need not exist
    /// yet. Null if there are too many feeds. Threads of `hasEnded`: that of the server.
    std::unique_ptr<EventFeed> Open(const std::wstring& path, std::function<bool()> hasEnded);

private:
    class Feed;
    struct Shared;

    void Loop();

    std::shared_ptr<Shared> shared;
    std::thread thread;
};

} // namespace web
