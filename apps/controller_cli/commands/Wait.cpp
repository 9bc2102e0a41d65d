#include "controller_cli/commands/Commands.h"

#include "controller_cli/commands/JobSelection.h"
#include "controller_cli/commands/WaitForCompletion.h"

namespace controller_cli::commands {

ExitCode Wait(CommandContext& context, const LongCommand& command) {
    HostSession session(context, StartOf(command));
    const std::vector<ListedJob> jobs = session.FetchJobs({command.ids});
    // Each name has to be one of a job.
    (void)SelectJobs(context, jobs, command.ids);
    return WaitForCompletion(context, session, jobs, command.asJson);
}

} // namespace controller_cli::commands
