#include "front_end/commands/Commands.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "front_end/commands/JobFilter.h"
#include "front_end/commands/JobListView.h"
#include "front_end/commands/JobSelection.h"
#include "front_end/connection/HostSession.h"
#include "front_end/output/JsonOutput.h"

namespace front_end::commands {

namespace {

/// The state of the queue is asked only if it matters: while no job waits, the host need not know the request.
bool IsWaiting(const ListedJob& job) {
    return job.status == JobStatus::Queued;
}

/// A long list is fetched and written in parts, so that neither host nor front end has all of it in one text. The host
/// prepares a part while the one before is written. Jobs that are deleted meanwhile are missing, new ones are at the
/// end.
void WriteAllAsJson(CommandContext& context, HostSession& session) {
    constexpr std::int32_t rowsOfPart = 1000;
    JobsJsonParts parts;
    bool isLast = false;
    session.RequestJobs({{}, 0, rowsOfPart});
    while (!isLast) {
        std::vector<ListedJob> jobs = session.AwaitJobs();
        isLast = jobs.size() < rowsOfPart;
        if (!isLast) {
            session.RequestJobs({{}, jobs.back().seqId, rowsOfPart});
        }
        context.console.Write(parts.Rows(ViewsOf(std::move(jobs))));
    }
    context.console.Write(parts.End());
}

void TellDropped(CommandContext& context, std::size_t dropped, std::size_t shown) {
    if (dropped > 0 && context.console.IsTerminal()) {
        context.console.Write(
            context.texts.Format(L"Outcome/NotAll", {std::to_wstring(shown), std::to_wstring(shown + dropped)}) +
            L"\n");
    }
}

} // namespace

ExitCode List(CommandContext& context, const Command& command) {
    const JobListView view(context, command);
    HostSession session(context, StartOf(command));
    if (command.asJson && command.ids.empty() && !command.HasConditions() && view.IsPlain()) {
        WriteAllAsJson(context, session);
        return ExitCode::Success;
    }
    std::vector<ListedJob> jobs = JobsOf(context, session, command);
    const bool waits = std::any_of(jobs.begin(), jobs.end(), IsWaiting);
    const std::size_t dropped = view.Arrange(jobs);
    if (command.asJson) {
        context.console.Write(JobsJson(JobModel(jobs).Views()));
        return ExitCode::Success;
    }
    if (waits && session.FetchQueueState().isPaused) {
        context.console.Write(context.texts.Get(L"Outcome/Paused") + L"\n");
    }
    view.Write(context, jobs);
    TellDropped(context, dropped, jobs.size());
    return ExitCode::Success;
}

} // namespace front_end::commands
