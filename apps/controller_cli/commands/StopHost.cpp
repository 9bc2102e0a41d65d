#include "controller_cli/commands/Commands.h"

#include "controller_cli/HostSession.h"

namespace controller_cli::commands {
namespace {

/// `unreachable` says why it is not asked as front ends ask.
void EndUnreachableHost(CommandContext& context, const UnreachableHost& unreachable) {
    switch (context.host.EndRunningHost(context.patience)) {
    case HostEnd::Ended:
        return;
    case HostEnd::StillRunning:
        throw CommandFailure{ExitCode::JobFailed, context.texts.Get(L"Errors/HostStillEnding")};
    case HostEnd::CannotBeAsked:
        throw unreachable;
    }
}

} // namespace

ExitCode StopHost(CommandContext& context, const LongCommand& /*command*/) {
    try {
        HostSession(context, Start::Never).StopHost();
    } catch (const UnreachableHost& unreachable) {
        EndUnreachableHost(context, unreachable);
    }
    context.console.Write(context.texts.Get(L"Outcome/HostStopped") + L"\n");
    return ExitCode::Success;
}

} // namespace controller_cli::commands
