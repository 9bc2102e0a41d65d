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

    /// The log of the job with this work directory from its beginning; it ends after `hasEnded` has returned true. The
    /// file need not exist yet; a link is not followed. Null if there are too many feeds. Threads of `hasEnded`: that
    /// of the server.
    std::unique_ptr<EventFeed> Open(const std::wstring& workDirectory, std::function<bool()> hasEnded);

private:
    class Feed;
    struct Shared;

    void Loop();

    std::shared_ptr<Shared> shared;
    std::thread thread;
};

} // namespace web
