#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace web {

/// The address at which a reverse proxy makes the server reachable.
struct PublicAddress {
    /// "https://jobs.example.org"
    std::string origin;
    /// "jobs.example.org"
    std::string host;
    /// "/" or "/alice/".
    std::string basePath = "/";

    bool IsSecure() const { return origin.starts_with("https:"); }
};

/// Reads an address such as "https://jobs.example.org/alice/"; a missing last slash is added. Returns nothing for any
/// other text, also one with a user, a query or a fragment. Threads: any.
[[nodiscard]] std::optional<PublicAddress> ReadPublicAddress(std::string_view address);

} // namespace web
