#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include <sys/types.h>

namespace platform {

/// One end of a connection. An end that its program has closed is not open, and its user is listed as root.
struct ConnectionEnd {
    uid_t user = 0;
    bool isOpen = false;

    bool operator==(const ConnectionEnd&) const = default;
};

/// The end at port `from` of 127.0.0.1 of the connection to port `to` there, in a table of the kernel (/proc/net/tcp,
/// /proc/net/tcp6); nothing if it is not listed. Threads: any.
[[nodiscard]] std::optional<ConnectionEnd> FindConnectionEnd(std::string_view table, std::uint16_t from,
                                                             std::uint16_t to);

} // namespace platform
