#include "controller_cli/commands/Commands.h"

#include <algorithm>

#include "controller_cli/connection/HostSession.h"
#include "controller_cli/output/JobTable.h"
#include "controller_cli/output/JsonOutput.h"

namespace controller_cli::commands {

namespace {

/// Asked only if it matters: while no job waits, the host need not know the request.
bool IsQueuePaused(HostSession& session, const JobModel& board) {
    const std::vector<JobRow>& jobs = board.Views();
    const auto waits = [](const JobRow& row) { return row.job.status == JobStatus::Queued; };
    return std::any_of(jobs.begin(), jobs.end(), waits) && session.FetchQueueState().isPaused;
}

} // namespace

ExitCode List(CommandContext& context, const LongCommand& command) {
    HostSession session(context, StartOf(command));
    const JobModel board(session.FetchJobs());
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

} // namespace controller_cli::commands
