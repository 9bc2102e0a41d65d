#include "controller_cli/commands/Commands.h"

#include "controller_cli/HostSession.h"

namespace controller_cli::commands {

ExitCode StopHost(CommandContext& context, const LongCommand& /*command*/) {
    HostSession(context, Start::Never).StopHost();
    context.console.Write(context.texts.Get(L"Outcome/HostStopped") + L"\n");
    return ExitCode::Success;
}

} // namespace controller_cli::commands
