#pragma once

#include "front_end/commands/CommandContext.h"
#include "front_end/commands/CommandFailure.h"

class EventTransmitter;
class EventTransmitterExtension;

namespace front_end {

enum class Start {
    /// Starts a host if none runs.
    WhenNoneRuns,
    /// Uses only a running host.
    Never
};

/// Thrown if a running host is not reachable from this process, or does not answer.
struct UnreachableHost : CommandFailure {};

/// Thrown if the host did not answer within the response timeout.
struct NoAnswerInTime : CommandFailure {};

/// A client connected to a host.
struct HostConnection {
    EventTransmitter& transmitter;
    /// Null if the module has none.
    EventTransmitterExtension* extension;

    /// False once the host has disconnected. True if the module cannot report it.
    bool IsOpen() const;
};

/// Connects to the host. Waits up to the response timeout for one that is starting. Throws `CommandFailure` if there is
/// no host and none may or can be started, and `UnreachableHost` if a running host cannot be reached.
HostConnection ConnectToHost(CommandContext& context, Start start);

/// Reports that the host did not answer within the response timeout.
[[noreturn]] void FailNoAnswer(const CommandContext& context);

} // namespace front_end
