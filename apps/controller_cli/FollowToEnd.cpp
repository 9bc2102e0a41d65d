#include "controller_cli/FollowToEnd.h"

#include <algorithm>

#include "controller_cli/JobTable.h"
#include "controller_cli/JsonOutput.h"
#include "controller_cli/LiveJobs.h"
#include "controller_cli/ProgressScreen.h"

namespace controller_cli {
namespace {

void WaitSilently(LiveJobs& jobs) {
    while (!jobs.HaveAllEnded()) {
        jobs.WaitForChanges();
    }
}

/// A terminal keeps the outcome alone; elsewhere an empty line parts it from what happened before.
void WaitOnScreen(CommandContext& context, LiveJobs& jobs, const std::vector<std::wstring>& jobIds) {
    if (jobs.HaveAllEnded()) {
        return;
    }
    ProgressScreen screen(context, jobs.Board());
    screen.Show(jobIds);
    while (!jobs.HaveAllEnded()) {
        screen.Show(jobs.WaitForChanges());
    }
    if (context.console.IsTerminal()) {
        screen.Clear();
    } else {
        context.console.Write(L"\n");
    }
}

void WaitForEnd(CommandContext& context, LiveJobs& jobs, const std::vector<std::wstring>& jobIds, bool asJson) {
    try {
        if (asJson) {
            WaitSilently(jobs);
        } else {
            WaitOnScreen(context, jobs, jobIds);
        }
    } catch (const CommandFailure& failure) {
        if (failure.exitCode != ExitCode::Interrupted) {
            throw;
        }
        throw CommandFailure{ExitCode::Interrupted, context.texts.Get(L"Outcome/JobsGoOn")};
    }
}

bool HasSucceeded(const JobView& view) {
    return view.job.status == JobStatus::Success;
}

} // namespace

ExitCode FollowToEnd(CommandContext& context, HostSession& session, const std::vector<std::wstring>& jobIds,
                     bool asJson) {
    LiveJobs jobs(session, jobIds);
    WaitForEnd(context, jobs, jobIds, asJson);
    const std::vector<JobView>& views = jobs.Board().Views();
    if (asJson) {
        context.console.Write(JobsJson(views));
    } else {
        WriteJobTable(context, views);
        context.console.Write(L"\n" + OutcomeSummary(context, views) + L"\n");
    }
    const bool isWhole = views.size() == jobIds.size();
    return isWhole && std::all_of(views.begin(), views.end(), HasSucceeded) ? ExitCode::Success : ExitCode::JobFailed;
}

} // namespace controller_cli
