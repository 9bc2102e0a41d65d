#include "controller_cli/commands/Commands.h"

#include <algorithm>

#include "controller_cli/HostSession.h"
#include "controller_cli/JobSelection.h"
#include "controller_cli/JobTable.h"

namespace controller_cli::commands {
namespace {

/// What the request has made of a job; a job that had ended is not in the answer.
JobStatus StatusAfter(const JobListInfo& job, const std::vector<JobStatusInfo>& cancelled) {
    const auto found =
        std::find_if(cancelled.begin(), cancelled.end(), [&](const JobStatusInfo& info) { return info.id == job.id; });
    return found == cancelled.end() ? job.status : found->status;
}

std::wstring Line(const CommandContext& context, const JobListInfo& job, JobStatus status) {
    return context.texts.Format(L"Outcome/JobState", {std::to_wstring(job.seqId), StatusText(context.texts, status)}) +
           L"\n";
}

} // namespace

ExitCode Cancel(CommandContext& context, const LongCommand& command) {
    HostSession session(context, StartOf(command));
    const std::vector<JobListInfo> jobs = SelectJobs(context, session.FetchJobs(), command.ids);
    const std::vector<JobStatusInfo> cancelled = session.Cancel(IdsOf(jobs));
    for (const JobListInfo& job : jobs) {
        context.console.Write(Line(context, job, StatusAfter(job, cancelled)));
    }
    return ExitCode::Success;
}

ExitCode CancelAll(CommandContext& context, const LongCommand& command) {
    HostSession session(context, StartOf(command));
    const std::vector<JobListInfo> jobs = session.FetchJobs();
    const std::vector<JobStatusInfo> cancelled = session.CancelAll();
    for (const JobListInfo& job : jobs) {
        const JobStatus status = StatusAfter(job, cancelled);
        if (!HasEnded(job.status) || status != job.status) {
            context.console.Write(Line(context, job, status));
        }
    }
    return ExitCode::Success;
}

} // namespace controller_cli::commands
