#include <algorithm>
#include <set>

#include "front_end/commands/Commands.h"
#include "front_end/commands/JobActions.h"
#include "front_end/commands/JobSelection.h"
#include "front_end/commands/SchedulingOptions.h"
#include "front_end/connection/HostSession.h"
#include "front_end/output/JobReports.h"
#include "front_end/output/StateJson.h"

namespace front_end {

/// A job that no longer waits cannot be changed.
void actions::Edit(CommandContext& context, HostSession& session, const std::vector<ListedJob>& jobs, JobsEdit edit,
                   const wchar_t* outcome, JobReports& reports) {
    edit.jobs = IdsOf(jobs);
    std::set<std::wstring> edited;
    for (const JobStatusInfo& report : jobs.empty() ? std::vector<JobStatusInfo>() : session.Edit(edit)) {
        edited.insert(report.id);
    }
    for (const JobListInfo& job : jobs) {
        const std::wstring number = std::to_wstring(job.seqId);
        if (edited.contains(job.id)) {
            reports.Done(job, job.status, context.texts.Format(outcome, {number}));
        } else {
            reports.NotDone(job, job.status, context.texts.Format(L"Errors/NotWaiting", {number}));
        }
    }
}

namespace commands {
namespace {

ExitCode EditWaiting(CommandContext& context, const Command& command, const JobsEdit& edit, const wchar_t* outcome) {
    HostSession session(context, StartOf(command));
    JobReports reports(context, command.asJson);
    actions::Edit(context, session, JobsOf(context, session, command), edit, outcome, reports);
    return reports.Finish();
}

ExitCode SetPaused(CommandContext& context, const Command& command, bool isPaused, const wchar_t* outcome) {
    HostSession session(context, StartOf(command));
    session.SetQueueState({isPaused});
    context.console.Write(command.asJson ? PausedJson(isPaused) : context.texts.Get(outcome) + L"\n");
    return ExitCode::Success;
}

} // namespace

ExitCode Edit(CommandContext& context, const Command& command) {
    const JobsEdit edit = EditOf(context, command);
    if (edit == JobsEdit()) {
        throw UsageProblem{L"Usage/NothingToEdit", {}};
    }
    return EditWaiting(context, command, edit, L"Outcome/Edited");
}

ExitCode Hold(CommandContext& context, const Command& command) {
    JobsEdit edit;
    edit.hold = true;
    return EditWaiting(context, command, edit, L"Outcome/Held");
}

ExitCode Release(CommandContext& context, const Command& command) {
    JobsEdit edit;
    edit.hold = false;
    return EditWaiting(context, command, edit, L"Outcome/Released");
}

ExitCode Pause(CommandContext& context, const Command& command) {
    return SetPaused(context, command, true, L"Outcome/Paused");
}

ExitCode Resume(CommandContext& context, const Command& command) {
    return SetPaused(context, command, false, L"Outcome/Resumed");
}

} // namespace commands
} // namespace front_end
