#pragma once

#include <optional>
#include <string>

namespace in_process {

/// What the identifier of a transmitter says: which end of which line.
struct TransmitterId {
    bool isServer = false;
    std::wstring bus;
    /// Tells front ends of one line apart; empty for the first.
    std::wstring client;

    bool operator==(const TransmitterId&) const = default;
};

/// Reads "engine:LINE" as the engine's end, "LINE" or "client:LINE" as a front end's end; "client:LINE#2" is another
/// front end of the same line. Nothing for an empty line, another word before the colon, and an engine with "#".
[[nodiscard]] std::optional<TransmitterId> ParseTransmitterId(const std::wstring& text);

} // namespace in_process
