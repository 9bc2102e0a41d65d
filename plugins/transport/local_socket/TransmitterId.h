#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace local_socket {

enum class End : std::int32_t { Server, Client };

/// A parsed transmitter id: server or client, and the name of the endpoint.
struct TransmitterId {
    End end = End::Server;
    std::string name;

    bool operator==(const TransmitterId&) const = default;
};

/// Parses "engine:NAME" or "client:NAME". NAME is 1 to 64 of A-Z, a-z, 0-9, "_", "." and "-", so that it can be part of
/// a file name on every system. Returns nothing for any other text.
[[nodiscard]] std::optional<TransmitterId> ParseTransmitterId(std::wstring_view text);

} // namespace local_socket
