#include "front_end/commands/Commands.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <set>

#include "front_end/commands/JobSelection.h"
#include "front_end/commands/SchedulingOptions.h"
#include "front_end/connection/HostSession.h"
#include "front_end/output/JobTable.h"
#include "text/Text.h"
#include "text/Time.h"

namespace front_end::commands {
namespace {

/// The remaining jobs of a deletion as the host now lists them: another front end may have deleted one, or it may have
/// started.
JobModel Leftover(HostSession& session, const std::vector<ListedJob>& jobs, const std::vector<std::wstring>& deleted) {
    const std::set<std::wstring> deletedIds(deleted.begin(), deleted.end());
    const auto isDeleted = [&](const JobListInfo& job) { return deletedIds.contains(job.id); };
    return JobModel(std::all_of(jobs.begin(), jobs.end(), isDeleted) ? std::vector<ListedJob>()
                                                                     : session.FetchJobs({IdsOf(jobs)}));
}

ExitCode DeleteJobs(CommandContext& context, HostSession& session, const std::vector<ListedJob>& jobs) {
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

/// Units: seconds since 1970-01-01 UTC. Nothing if it is not known: a job that was cancelled before it ran has only the
/// time at which it was enqueued.
std::optional<std::int64_t> LastTime(const ListedJob& job) {
    if (const auto end = text::ReadUtcTime(job.endTime)) {
        return end;
    }
    return job.queuedTime == 0 ? std::nullopt : std::optional(job.queuedTime);
}

std::optional<std::int64_t> LatestEnd(const CommandContext& context, const Command& command) {
    if (command.olderThan.empty()) {
        return std::nullopt;
    }
    return context.now() - DurationOf(command.olderThan).value_or(0);
}

/// Accepts the names of `--list` and of scripts.
std::set<JobStatus> StatesOf(const CommandContext& context, const Command& command) {
    constexpr std::array ended = {JobStatus::Success, JobStatus::Failed, JobStatus::Canceled, JobStatus::Dequeued};
    std::set<JobStatus> states;
    for (const std::wstring& name : command.states) {
        const auto* const state = std::find_if(ended.begin(), ended.end(), [&](JobStatus status) {
            return name == StatusText(context.texts, status) || name == text::FromUtf8(JobStatusString(status));
        });
        if (state == ended.end()) {
            throw UsageProblem{L"Usage/State", name};
        }
        states.insert(*state);
    }
    return command.states.empty() ? std::set<JobStatus>(ended.begin(), ended.end()) : states;
}

} // namespace

ExitCode Delete(CommandContext& context, const Command& command) {
    HostSession session(context, StartOf(command));
    return DeleteJobs(context, session, SelectJobs(context, session.FetchJobs({command.ids}), command.ids));
}

ExitCode Clean(CommandContext& context, const Command& command) {
    const std::optional<std::int64_t> latest = LatestEnd(context, command);
    const std::set<JobStatus> states = StatesOf(context, command);
    if (!latest && command.states.empty()) {
        throw UsageProblem{L"Usage/NothingToClean", {}};
    }
    HostSession session(context, StartOf(command));
    std::vector<ListedJob> jobs = session.FetchJobs();
    std::erase_if(jobs, [&](const ListedJob& job) {
        const auto time = LastTime(job);
        return !states.contains(job.status) || (latest && (!time || *time > *latest));
    });
    if (jobs.empty() || command.isDryRun) {
        WriteJobTable(context, JobModel(jobs).Views());
        return ExitCode::Success;
    }
    return DeleteJobs(context, session, jobs);
}

} // namespace front_end::commands
