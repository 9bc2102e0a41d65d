#include "front_end/commands/Commands.h"

#include <algorithm>
#include <iterator>
#include <set>

#include "formats/JobStates.h"
#include "front_end/jobs/JobWatcher.h"
#include "front_end/output/JsonOutput.h"
#include "front_end/output/ProgressScreen.h"

namespace front_end::commands {
namespace {

std::vector<std::wstring> IdsOfActive(const JobModel& board) {
    std::vector<std::wstring> ids;
    for (const JobRow& view : board.Views()) {
        if (!IsOver(view.job.status)) {
            ids.push_back(view.job.id);
        }
    }
    return ids;
}

std::vector<JobRow> ViewsOf(const JobModel& board, const std::vector<std::wstring>& ids) {
    const std::set<std::wstring> wanted(ids.begin(), ids.end());
    std::vector<JobRow> views;
    std::copy_if(board.Views().begin(), board.Views().end(), std::back_inserter(views),
                 [&](const JobRow& view) { return wanted.contains(view.job.id); });
    return views;
}

[[noreturn]] void WatchScreen(CommandContext& context, JobWatcher& jobs) {
    ProgressScreen screen(context, jobs.Board());
    screen.Show(IdsOfActive(jobs.Board()));
    for (;;) {
        screen.Show(jobs.WaitForChanges(screen.Interval()));
    }
}

/// Writes all jobs first, then those that change.
[[noreturn]] void WatchAsJson(CommandContext& context, JobWatcher& jobs) {
    context.console.Write(JobsJson(jobs.Board().Views()));
    for (;;) {
        const std::vector<std::wstring> changed = jobs.WaitForChanges();
        if (!changed.empty()) {
            context.console.Write(JobsJson(ViewsOf(jobs.Board(), changed)));
        }
    }
}

} // namespace

ExitCode Watch(CommandContext& context, const Command& command) {
    HostSession session(context, StartOf(command));
    try {
        JobWatcher jobs(session);
        if (command.asJson) {
            WatchAsJson(context, jobs);
        } else {
            WatchScreen(context, jobs);
        }
    } catch (const CommandFailure& failure) {
        if (failure.exitCode != ExitCode::Interrupted) {
            throw;
        }
    }
    return ExitCode::Success;
}

} // namespace front_end::commands
