#include "controller_cli/commands/Commands.h"

#include <algorithm>
#include <set>

#include "controller_cli/commands/JobSelection.h"
#include "controller_cli/connection/HostSession.h"
#include "controller_cli/output/JobTable.h"

namespace controller_cli::commands {
namespace {

/// The remaining jobs of a deletion as the host now lists them: another front end may have deleted one, or it may have
/// started.
JobModel Leftover(HostSession& session, const std::vector<ListedJob>& jobs, const std::vector<std::wstring>& deleted) {
    const std::set<std::wstring> deletedIds(deleted.begin(), deleted.end());
    const auto isDeleted = [&](const JobListInfo& job) { return deletedIds.contains(job.id); };
    return JobModel(std::all_of(jobs.begin(), jobs.end(), isDeleted) ? std::vector<ListedJob>() : session.FetchJobs());
}

} // namespace

ExitCode Delete(CommandContext& context, const LongCommand& command) {
    HostSession session(context, StartOf(command));
    const std::vector<ListedJob> jobs = SelectJobs(context, session.FetchJobs(), command.ids);
    const JobModel leftover = Leftover(session, jobs, session.Delete(IdsOf(jobs)));
    ExitCode exitCode = ExitCode::Success;
    for (const JobListInfo& job : jobs) {
        const std::wstring number = std::to_wstring(job.seqId);
        if (const JobRow* const view = leftover.Find(job.id)) {
            const std::wstring status = StatusText(context.texts, view->job.status);
            context.console.WriteError(context.texts.Format(L"Errors/NotDeleted", {number, status}) + L"\n");
            exitCode = ExitCode::JobFailed;
        } else {
            context.console.Write(context.texts.Format(L"Outcome/Deleted", {number}) + L"\n");
        }
    }
    return exitCode;
}

} // namespace controller_cli::commands
