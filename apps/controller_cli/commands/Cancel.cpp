#include "controller_cli/commands/Commands.h"

#include <map>
#include <string>
#include <vector>

#include "controller_cli/HostSession.h"
#include "controller_cli/JobSelection.h"
#include "controller_cli/JobTable.h"

namespace controller_cli::commands {
namespace {

/// What the request has made of jobs; one that had ended is not in the answer.
class Outcome {
public:
    explicit Outcome(const std::vector<JobStatusInfo>& cancelled) {
        for (const JobStatusInfo& info : cancelled) {
            statusById[info.id] = info.status;
        }
    }

    JobStatus StatusOf(const JobListInfo& job) const {
        const auto found = statusById.find(job.id);
        return found == statusById.end() ? job.status : found->second;
    }

private:
    std::map<std::wstring, JobStatus> statusById;
};

std::wstring Line(const CommandContext& context, const JobListInfo& job, JobStatus status) {
    return context.texts.Format(L"Outcome/JobState", {std::to_wstring(job.seqId), StatusText(context.texts, status)}) +
           L"\n";
}

} // namespace

ExitCode Cancel(CommandContext& context, const LongCommand& command) {
    HostSession session(context, StartOf(command));
    const std::vector<JobListInfo> jobs = SelectJobs(context, session.FetchJobs(), command.ids);
    const Outcome outcome(session.Cancel(IdsOf(jobs)));
    for (const JobListInfo& job : jobs) {
        context.console.Write(Line(context, job, outcome.StatusOf(job)));
    }
    return ExitCode::Success;
}

ExitCode CancelAll(CommandContext& context, const LongCommand& command) {
    HostSession session(context, StartOf(command));
    const std::vector<JobListInfo> jobs = session.FetchJobs();
    const Outcome outcome(session.CancelAll());
    for (const JobListInfo& job : jobs) {
        const JobStatus status = outcome.StatusOf(job);
        if (!HasEnded(job.status) || status != job.status) {
            context.console.Write(Line(context, job, status));
        }
    }
    return ExitCode::Success;
}

} // namespace controller_cli::commands
