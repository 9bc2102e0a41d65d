#include "controller_cli/commands/Commands.h"

#include <algorithm>

#include "controller_cli/HostSession.h"
#include "controller_cli/JobSelection.h"
#include "controller_cli/JobTable.h"

namespace controller_cli::commands {

ExitCode Delete(CommandContext& context, const LongCommand& command) {
    HostSession session(context, StartOf(command));
    const std::vector<JobListInfo> jobs = SelectJobs(context, session.FetchJobs(), command.ids);
    const std::vector<std::wstring> deleted = session.Delete(IdsOf(jobs));
    ExitCode exitCode = ExitCode::Success;
    for (const JobListInfo& job : jobs) {
        const std::wstring number = std::to_wstring(job.seqId);
        if (std::find(deleted.begin(), deleted.end(), job.id) != deleted.end()) {
            context.console.Write(context.texts.Format(L"Outcome/Deleted", {number}) + L"\n");
        } else {
            const std::wstring status = StatusText(context.texts, job.status);
            context.console.WriteError(context.texts.Format(L"Errors/NotDeleted", {number, status}) + L"\n");
            exitCode = ExitCode::JobFailed;
        }
    }
    return exitCode;
}

} // namespace controller_cli::commands
