#include "controller_cli/commands/Commands.h"

#include "controller_cli/FollowToEnd.h"
#include "controller_cli/JobSelection.h"

namespace controller_cli::commands {

ExitCode Wait(CommandContext& context, const LongCommand& command) {
    HostSession session(context, StartOf(command));
    const std::vector<std::wstring> ids = IdsOf(SelectJobs(context, session.FetchJobs(), command.ids));
    return FollowToEnd(context, session, ids, command.asJson);
}

} // namespace controller_cli::commands
