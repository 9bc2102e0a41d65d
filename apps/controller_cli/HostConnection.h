#pragma once

#include "controller_cli/CommandContext.h"
#include "controller_cli/CommandFailure.h"

class EventTransmitter;
class EventTransmitterExtension;

namespace controller_cli {

enum class Start {
    /// Starts a host where none runs.
    WhenNoneRuns,
    /// Only a host that is there already.
    Never
};

/// Thrown where a host runs that cannot be reached from here, or does not answer.
struct UnreachableHost : CommandFailure {};

/// This end of the line to a host.
struct HostConnection {
    EventTransmitter& transmitter;
    /// Null when the module has none.
    EventTransmitterExtension* extension;

    /// False once the host has gone; true where the module does not tell.
    bool IsOpen() const;
};

/// Connects to the host. One that is starting, whoever started it, is waited for as long as an answer may take. Where
/// there is none, and none is to be or can be started, throws `CommandFailure`; where one runs that cannot be reached,
/// `UnreachableHost`.
HostConnection ConnectToHost(CommandContext& context, Start start);

/// Says that the host did not answer within the time that an answer may take.
[[noreturn]] void FailNoAnswer(const CommandContext& context);

} // namespace controller_cli
