#include "front_end/commands/Commands.h"

#include <algorithm>
#include <cstdint>

#include "front_end/commands/JobSelection.h"
#include "front_end/connection/HostSession.h"
#include "front_end/output/JobTable.h"
#include "front_end/output/JsonOutput.h"

namespace front_end::commands {

namespace {

/// Asked only if it matters: while no job waits, the host need not know the request.
bool IsQueuePaused(HostSession& session, const JobModel& board) {
    const std::vector<JobRow>& jobs = board.Views();
    const auto waits = [](const JobRow& row) { return row.job.status == JobStatus::Queued; };
    return std::any_of(jobs.begin(), jobs.end(), waits) && session.FetchQueueState().isPaused;
}

/// A long list is fetched and written in parts, so that neither host nor front end has all of it in one text. Jobs that
/// are deleted meanwhile are missing, new ones are at the end.
void WriteAllAsJson(CommandContext& context, HostSession& session) {
    constexpr std::int32_t rowsOfPart = 1000;
    JobsJsonParts parts;
    std::vector<ListedJob> jobs;
    do {
        const std::int32_t last = jobs.empty() ? 0 : jobs.back().seqId;
        jobs = session.FetchJobs({{}, last, rowsOfPart});
        context.console.Write(parts.Rows(JobModel(jobs).Views()));
    } while (jobs.size() == rowsOfPart);
    context.console.Write(parts.End());
}

} // namespace

ExitCode List(CommandContext& context, const Command& command) {
    HostSession session(context, StartOf(command));
    if (command.asJson && command.ids.empty()) {
        WriteAllAsJson(context, session);
        return ExitCode::Success;
    }
    const JobModel board(command.ids.empty() ? session.FetchJobs()
                                             : SelectJobs(context, session.FetchJobs({command.ids}), command.ids));
    if (command.asJson) {
        context.console.Write(JobsJson(board.Views()));
        return ExitCode::Success;
    }
    if (IsQueuePaused(session, board)) {
        context.console.Write(context.texts.Get(L"Outcome/Paused") + L"\n");
    }
    WriteJobTable(context, board.Views());
    return ExitCode::Success;
}

} // namespace front_end::commands
