#pragma once

#include <optional>
#include <string>

namespace in_process {

/// The parsed id of a transmitter: which endpoint of which bus.
struct TransmitterId {
    bool isServer = false;
    std::wstring bus;
    /// Distinguishes the clients of one bus; empty for the first.
    std::wstring client;

    bool operator==(const TransmitterId&) const = default;
};

/// Parses "engine:BUS" as the server, "BUS" or "client:BUS" as a client; "client:BUS#2" is another client of the same
/// bus. Returns nothing for an empty bus name, any other word before the colon, and a server with "#".
[[nodiscard]] std::optional<TransmitterId> ParseTransmitterId(const std::wstring& text);

} // namespace in_process
