#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include <sys/types.h>

namespace platform {

/// The user of the connection from port `from` of 127.0.0.1 to port `to` there, in a table of the kernel
/// (/proc/net/tcp, /proc/net/tcp6); nothing if it is not listed. Threads: any.
[[nodiscard]] std::optional<uid_t> UserInConnectionTable(std::string_view table, std::uint16_t from, std::uint16_t to);

} // namespace platform
