#include "front_end/commands/WaitForCompletion.h"

#include <algorithm>

#include "front_end/jobs/JobWatcher.h"
#include "front_end/output/JobTable.h"
#include "front_end/output/JsonOutput.h"
#include "front_end/output/ProgressScreen.h"

namespace front_end {
namespace {

void WaitSilently(JobWatcher& jobs) {
    while (!jobs.HaveAllEnded()) {
        jobs.WaitForChanges();
    }
}

/// A terminal keeps only the outcome; otherwise an empty line separates the outcome from the progress.
void WaitOnScreen(CommandContext& context, JobWatcher& jobs) {
    if (jobs.HaveAllEnded()) {
        return;
    }
    ProgressScreen screen(context, jobs.Board());
    screen.Show(jobs.Board().Ids());
    while (!jobs.HaveAllEnded()) {
        screen.Show(jobs.WaitForChanges(screen.Interval()));
    }
    if (context.console.IsTerminal()) {
        screen.Clear();
    } else {
        context.console.Write(L"\n");
    }
}

void WaitForEnd(CommandContext& context, JobWatcher& jobs, bool asJson) {
    try {
        if (asJson) {
            WaitSilently(jobs);
        } else {
            WaitOnScreen(context, jobs);
        }
    } catch (const CommandFailure& failure) {
        if (failure.exitCode != ExitCode::Interrupted) {
            throw;
        }
        throw CommandFailure{ExitCode::Interrupted, context.texts.Get(L"Outcome/JobsGoOn")};
    }
}

void WriteOutcome(CommandContext& context, const std::vector<JobRow>& views) {
    WriteJobTable(context, views);
    const std::vector<std::wstring> messages = MessageLines(context, views);
    const std::wstring gap = messages.empty() ? L"" : L"\n";
    context.console.Write(gap + JoinedLines(messages) + L"\n" + OutcomeSummary(context, views) + L"\n");
}

bool HasSucceeded(const JobRow& view) {
    return view.job.status == JobStatus::Success;
}

} // namespace

ExitCode WaitForCompletion(CommandContext& context, HostSession& session, const std::vector<ListedJob>& jobs,
                           bool asJson) {
    JobWatcher liveJobs(session, jobs);
    WaitForEnd(context, liveJobs, asJson);
    const std::vector<JobRow>& views = liveJobs.Board().Views();
    if (asJson) {
        context.console.Write(JobsJson(views));
    } else {
        WriteOutcome(context, views);
    }
    return std::all_of(views.begin(), views.end(), HasSucceeded) ? ExitCode::Success : ExitCode::JobFailed;
}

} // namespace front_end
