#include "controller_cli/commands/Commands.h"

#include <algorithm>
#include <iterator>
#include <set>

#include "controller_cli/JsonOutput.h"
#include "controller_cli/LiveJobs.h"
#include "controller_cli/ProgressScreen.h"

namespace controller_cli::commands {
namespace {

std::vector<std::wstring> IdsOfActive(const JobBoard& board) {
    std::vector<std::wstring> ids;
    for (const JobView& view : board.Views()) {
        if (!HasEnded(view.job.status)) {
            ids.push_back(view.job.id);
        }
    }
    return ids;
}

std::vector<JobView> ViewsOf(const JobBoard& board, const std::vector<std::wstring>& ids) {
    const std::set<std::wstring> wanted(ids.begin(), ids.end());
    std::vector<JobView> views;
    std::copy_if(board.Views().begin(), board.Views().end(), std::back_inserter(views),
                 [&](const JobView& view) { return wanted.contains(view.job.id); });
    return views;
}

[[noreturn]] void WatchScreen(CommandContext& context, LiveJobs& jobs) {
    ProgressScreen screen(context, jobs.Board());
    screen.Show(IdsOfActive(jobs.Board()));
    for (;;) {
        screen.Show(jobs.WaitForChanges(screen.Interval()));
    }
}

/// First all jobs, then those that change.
[[noreturn]] void WatchAsJson(CommandContext& context, LiveJobs& jobs) {
    context.console.Write(JobsJson(jobs.Board().Views()));
    for (;;) {
        const std::vector<std::wstring> changed = jobs.WaitForChanges();
        if (!changed.empty()) {
            context.console.Write(JobsJson(ViewsOf(jobs.Board(), changed)));
        }
    }
}

} // namespace

ExitCode Watch(CommandContext& context, const LongCommand& command) {
    HostSession session(context, StartOf(command));
    try {
        LiveJobs jobs(session);
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

} // namespace controller_cli::commands
