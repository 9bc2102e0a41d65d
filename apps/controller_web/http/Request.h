#pragma once

#include "controller_web/http/ReceivedFile.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace web {

enum class Method { Get, Post, Put, Delete };

/// A request that has passed the server's checks: origin, session, method, content type and sizes. All text is UTF-8.
struct Request {
    Method method = Method::Get;
    /// The percent-decoded parts of the path between its slashes: "/api/v1/jobs/a%2Fb" has "api", "v1", "jobs" and
    /// "a/b". A part may hold any bytes except NUL; it is never to be used as a path unchecked.
    std::vector<std::string> path;
    /// The decoded parameters of the query.
    std::multimap<std::string, std::string> query;
    /// The header "Range"; empty if missing.
    std::string range;
    /// The header "If-None-Match"; empty if missing.
    std::string ifNoneMatch;
    /// The header "Last-Event-ID"; empty if missing.
    std::string lastEventId;
    std::string body;
    /// The body of an upload, which is not in `body`; null for other requests.
    std::shared_ptr<ReceivedFile> file;
};

} // namespace web
