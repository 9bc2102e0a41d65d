#include "controller_cli/commands/Commands.h"

#include <set>

#include "controller_cli/commands/JobSelection.h"
#include "controller_cli/commands/WaitForCompletion.h"

namespace controller_cli::commands {

ExitCode Wait(CommandContext& context, const LongCommand& command) {
    HostSession session(context, StartOf(command));
    std::vector<ListedJob> jobs = session.FetchJobs();
    const std::vector<std::wstring> selected = IdsOf(SelectJobs(context, jobs, command.ids));
    const std::set<std::wstring> ids(selected.begin(), selected.end());
    std::erase_if(jobs, [&](const JobListInfo& job) { return !ids.contains(job.id); });
    return WaitForCompletion(context, session, jobs, command.asJson);
}

} // namespace controller_cli::commands
