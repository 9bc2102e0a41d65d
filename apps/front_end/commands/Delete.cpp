#include "front_end/commands/Commands.h"

#include <algorithm>
#include <array>
#include <set>

#include "formats/JobStates.h"
#include "front_end/commands/Confirmation.h"
#include "front_end/commands/JobActions.h"
#include "front_end/commands/JobFilter.h"
#include "front_end/commands/JobSelection.h"
#include "front_end/connection/HostSession.h"
#include "front_end/output/JobReports.h"
#include "front_end/output/JobTable.h"
#include "front_end/output/JsonOutput.h"

namespace front_end {
namespace {

/// The remaining jobs of a deletion as the host now lists them: another front end may have deleted one, or it may have
/// started.
JobModel Leftover(HostSession& session, const std::vector<ListedJob>& jobs, const std::vector<std::wstring>& deleted) {
    const std::set<std::wstring> deletedIds(deleted.begin(), deleted.end());
    const auto isDeleted = [&](const JobListInfo& job) { return deletedIds.contains(job.id); };
    return JobModel(std::all_of(jobs.begin(), jobs.end(), isDeleted) ? std::vector<ListedJob>()
                                                                     : session.FetchJobs({IdsOf(jobs)}));
}

ExitCode DeleteJobs(CommandContext& context, const Command& command, HostSession& session,
                    const std::vector<ListedJob>& jobs) {
    ConfirmMany(context, command, L"Confirm/Delete", jobs);
    JobReports reports(context, command.asJson);
    actions::Delete(context, session, jobs, reports);
    return reports.Finish();
}

/// A state of jobs that have not ended is a mistake: such jobs cannot be deleted.
void RequireEndedStates(const CommandContext& context, const Command& command) {
    constexpr std::array ended = {JobStatus::Success, JobStatus::Failed, JobStatus::Canceled, JobStatus::Dequeued};
    for (const std::wstring& name : command.states) {
        Command one;
        one.states = {name};
        const JobFilter filter(context, one);
        ListedJob job;
        if (std::none_of(ended.begin(), ended.end(), [&](JobStatus status) {
                job.status = status;
                return filter.Matches(job);
            })) {
            throw UsageProblem{L"Usage/State", name};
        }
    }
}

} // namespace

void actions::Delete(CommandContext& context, HostSession& session, const std::vector<ListedJob>& jobs,
                     JobReports& reports) {
    const auto deleted = jobs.empty() ? std::vector<std::wstring>() : session.Delete(IdsOf(jobs));
    const JobModel leftover = Leftover(session, jobs, deleted);
    for (const JobListInfo& job : jobs) {
        const std::wstring number = std::to_wstring(job.seqId);
        if (const JobRow* const view = leftover.Find(job.id)) {
            const std::wstring status = StatusText(context.texts, view->job.status);
            reports.NotDone(job, view->job.status, context.texts.Format(L"Errors/NotDeleted", {number, status}));
        } else {
            reports.Done(job, unlistedStatus, context.texts.Format(L"Outcome/Deleted", {number}));
        }
    }
}

namespace commands {

ExitCode Delete(CommandContext& context, const Command& command) {
    HostSession session(context, StartOf(command));
    return DeleteJobs(context, command, session, JobsOf(context, session, command));
}

ExitCode Clean(CommandContext& context, const Command& command) {
    if (!command.HasConditions()) {
        throw UsageProblem{L"Usage/NothingToClean", {}};
    }
    RequireEndedStates(context, command);
    const JobFilter filter(context, command);
    HostSession session(context, StartOf(command));
    std::vector<ListedJob> jobs = session.FetchJobs();
    std::erase_if(jobs, [&](const ListedJob& job) { return !IsOver(job.status) || !filter.Matches(job); });
    if (!command.asJson && (jobs.empty() || command.isDryRun)) {
        WriteJobTable(context, JobModel(jobs).Views());
        return ExitCode::Success;
    }
    if (command.isDryRun) {
        context.console.Write(JobsJson(JobModel(jobs).Views()));
        return ExitCode::Success;
    }
    return DeleteJobs(context, command, session, jobs);
}

} // namespace commands
} // namespace front_end
