#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace web {

/// A request as it was received, without its body; nothing is checked.
struct RequestHead {
    std::string method;
    std::string target;
    /// Each header "Host" and "Origin".
    std::vector<std::string> hosts = {};
    std::vector<std::string> origins = {};
    // Other headers; empty if missing.
    std::string fetchSite = {};
    std::string cookie = {};
    std::string contentType = {};
    std::string range = {};
    std::string ifNoneMatch = {};
    std::string lastEventId = {};
    std::string acceptEncoding = {};
};

} // namespace web
