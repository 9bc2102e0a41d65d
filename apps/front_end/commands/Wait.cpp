#include "front_end/commands/Commands.h"

#include "front_end/commands/JobSelection.h"
#include "front_end/commands/WaitForCompletion.h"

namespace front_end::commands {

ExitCode Wait(CommandContext& context, const Command& command) {
    HostSession session(context, StartOf(command));
    const std::vector<ListedJob> jobs = session.FetchJobs({command.ids});
    // Each name has to be one of a job.
    (void)SelectJobs(context, jobs, command.ids);
    return WaitForCompletion(context, session, jobs, command.asJson);
}

} // namespace front_end::commands
