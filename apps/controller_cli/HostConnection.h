#pragma once

#include "controller_cli/CommandContext.h"
#include "controller_cli/CommandFailure.h"

class EventTransmitter;

namespace controller_cli {

enum class Start {
    /// Starts a host where none runs.
    WhenNoneRuns,
    /// Only a host that is there already.
    Never
};

/// Thrown where a host runs that cannot be reached from here.
struct UnreachableHost : CommandFailure {};

/// This end of the line to a host. Where there is none, and none is to be or can be started, throws `CommandFailure`;
/// where one runs that cannot be reached, `UnreachableHost`.
EventTransmitter& ConnectToHost(CommandContext& context, Start start);

} // namespace controller_cli
