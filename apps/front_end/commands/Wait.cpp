#include "front_end/commands/Commands.h"

#include <algorithm>

#include "front_end/commands/JobSelection.h"
#include "front_end/commands/WaitForCompletion.h"

namespace front_end::commands {

ExitCode Wait(CommandContext& context, const Command& command) {
    HostSession session(context, StartOf(command));
    std::vector<ListedJob> jobs = JobsOf(context, session, command);
    std::stable_sort(jobs.begin(), jobs.end(),
                     [](const ListedJob& left, const ListedJob& right) { return left.seqId < right.seqId; });
    return WaitForCompletion(context, session, jobs, command.asJson);
}

} // namespace front_end::commands
