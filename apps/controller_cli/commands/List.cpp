#include "controller_cli/commands/Commands.h"

#include "controller_cli/connection/HostSession.h"
#include "controller_cli/output/JobTable.h"
#include "controller_cli/output/JsonOutput.h"

namespace controller_cli::commands {

ExitCode List(CommandContext& context, const LongCommand& command) {
    HostSession session(context, StartOf(command));
    const JobModel board(session.FetchJobs());
    if (command.asJson) {
        context.console.Write(JobsJson(board.Views()));
    } else {
        WriteJobTable(context, board.Views());
    }
    return ExitCode::Success;
}

} // namespace controller_cli::commands
