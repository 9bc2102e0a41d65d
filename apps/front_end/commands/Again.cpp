#include <cstddef>

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "formats/JobStates.h"
#include "front_end/commands/Commands.h"
#include "front_end/commands/JobActions.h"
#include "front_end/commands/JobSelection.h"
#include "front_end/commands/Problems.h"
#include "front_end/connection/HostSession.h"
#include "front_end/output/JobReports.h"

namespace front_end {
namespace {

/// Jobs of one former request need one request.
struct Repetition {
    ScheduledRequest request;
    std::vector<ListedJob> formerJobs;
};

bool Continue(const Repetition& repetition, const ScheduledRequest& next) {
    ScheduledRequest request = repetition.request;
    request.inputFileSets = next.inputFileSets;
    return request == next;
}

std::vector<Repetition> RepetitionsOf(const std::vector<ListedJob>& jobs) {
    std::vector<Repetition> repetitions;
    for (const ListedJob& job : jobs) {
        const ScheduledRequest request = RequestToRepeat(job);
        if (repetitions.empty() || !Continue(repetitions.back(), request)) {
            repetitions.push_back({request, {job}});
        } else {
            repetitions.back().request.inputFileSets.push_back(job.inputFiles);
            repetitions.back().formerJobs.push_back(job);
        }
    }
    return repetitions;
}

/// The new jobs have their own numbers; `former` is the job that each repeats.
void SendRepetition(CommandContext& context, HostSession& session, Repetition& repetition, JobReports& reports) {
    repetition.request.requestId = ControllerCSWrapper::CreateGuid();
    const JobEnqueueResult result = session.Enqueue(repetition.request);
    WriteProblems(context, RefusalReasons(result));
    for (std::size_t i = 0; i < repetition.formerJobs.size(); ++i) {
        const JobListInfo& former = repetition.formerJobs[i];
        const std::wstring formerNumber = std::to_wstring(former.seqId);
        if (i >= result.jobIds.size() || result.jobIds[i].id.empty()) {
            reports.NotDone(former, former.status, context.texts.Format(L"Errors/NotAgain", {formerNumber}));
            continue;
        }
        JobListInfo added = former;
        added.id = result.jobIds[i].id;
        added.seqId = result.jobIds[i].seqId;
        reports.Done(added, JobStatus::Queued,
                     context.texts.Format(L"Outcome/Again", {std::to_wstring(added.seqId), formerNumber}));
    }
}

/// A job that has not ended cannot have its results again.
void RequireEnded(const CommandContext& context, std::vector<ListedJob>& jobs, JobReports& reports) {
    std::erase_if(jobs, [&](const ListedJob& job) {
        if (!IsOver(job.status)) {
            reports.NotDone(job, job.status, context.texts.Format(L"Errors/NotEnded", {std::to_wstring(job.seqId)}));
        }
        return !IsOver(job.status);
    });
}

} // namespace

void actions::Repeat(CommandContext& context, HostSession& session, std::vector<ListedJob> jobs, JobReports& reports) {
    RequireEnded(context, jobs, reports);
    for (Repetition& repetition : RepetitionsOf(jobs)) {
        SendRepetition(context, session, repetition, reports);
    }
}

ExitCode commands::Again(CommandContext& context, const Command& command) {
    HostSession session(context, StartOf(command));
    JobReports reports(context, command.asJson);
    actions::Repeat(context, session, JobsOf(context, session, command), reports);
    return reports.Finish();
}

} // namespace front_end
