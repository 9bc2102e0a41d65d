#include "controller_cli/commands/Commands.h"

#include <algorithm>

#include "controller_cli/commands/JobSelection.h"
#include "controller_cli/commands/WaitForCompletion.h"

namespace controller_cli::commands {

ExitCode Wait(CommandContext& context, const LongCommand& command) {
    HostSession session(context, StartOf(command));
    std::vector<JobListInfo> jobs = session.FetchJobs();
    const std::vector<std::wstring> ids = IdsOf(SelectJobs(context, jobs, command.ids));
    std::erase_if(jobs, [&](const JobListInfo& job) { return std::find(ids.begin(), ids.end(), job.id) == ids.end(); });
    return WaitForCompletion(context, session, jobs, command.asJson);
}

} // namespace controller_cli::commands
