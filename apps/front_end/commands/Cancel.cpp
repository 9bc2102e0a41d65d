#include "front_end/commands/Commands.h"

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "formats/JobStates.h"
#include "front_end/commands/Confirmation.h"
#include "front_end/commands/JobActions.h"
#include "front_end/commands/JobSelection.h"
#include "front_end/connection/HostSession.h"
#include "front_end/output/JobReports.h"
#include "front_end/output/JobTable.h"

namespace front_end {
namespace {

/// The outcome of a cancellation. The answer omits jobs that could no longer be cancelled: since the list was fetched
/// they may have ended or been deleted or cancelled by another front end. It may also contain newer jobs.
class Outcome {
public:
    Outcome(HostSession& session, std::vector<ListedJob> askedFor, const std::vector<JobStatusInfo>& cancelled)
        : jobs(std::move(askedFor)) {
        for (const JobListInfo& job : jobs) {
            askedForIds.insert(job.id);
        }
        for (const JobStatusInfo& info : cancelled) {
            statusById[info.id] = info.status;
        }
        if (std::any_of(jobs.begin(), jobs.end(), [this](const JobListInfo& job) { return IsUnknown(job); }) ||
            std::any_of(cancelled.begin(), cancelled.end(),
                        [this](const auto& info) { return !IsAskedFor(info.id); })) {
            TakeList(session.FetchJobs());
        }
    }

    const std::vector<ListedJob>& Jobs() const { return jobs; }

    JobStatus StatusOf(const JobListInfo& job) const {
        const auto found = statusById.find(job.id);
        return found == statusById.end() ? job.status : found->second;
    }

private:
    bool IsUnknown(const JobListInfo& job) const { return !IsOver(job.status) && !statusById.contains(job.id); }

    bool IsAskedFor(const std::wstring& id) const { return askedForIds.contains(id); }

    /// A job that was listed before and is missing now was deleted.
    void TakeList(const std::vector<ListedJob>& list) {
        for (const JobListInfo& job : jobs) {
            statusById.try_emplace(job.id, unlistedStatus);
        }
        for (const ListedJob& job : list) {
            if (statusById.contains(job.id) && !IsAskedFor(job.id)) {
                jobs.push_back(job);
            }
            statusById[job.id] = job.status;
        }
    }

    std::vector<ListedJob> jobs;
    std::set<std::wstring> askedForIds;
    std::map<std::wstring, JobStatus> statusById;
};

void Tell(CommandContext& context, const Outcome& outcome, JobReports& reports) {
    for (const JobListInfo& job : outcome.Jobs()) {
        const JobStatus status = outcome.StatusOf(job);
        reports.Done(
            job, status,
            context.texts.Format(L"Outcome/JobState", {std::to_wstring(job.seqId), StatusText(context.texts, status)}));
    }
}

} // namespace

namespace actions {

/// A request for no jobs would cancel all.
void Cancel(CommandContext& context, HostSession& session, const std::vector<ListedJob>& jobs, JobReports& reports) {
    const auto cancelled = jobs.empty() ? std::vector<JobStatusInfo>() : session.Cancel(IdsOf(jobs));
    Tell(context, Outcome(session, jobs, cancelled), reports);
}

void CancelAll(CommandContext& context, HostSession& session, const std::vector<ListedJob>& jobs, JobReports& reports) {
    Tell(context, Outcome(session, jobs, session.CancelAll()), reports);
}

} // namespace actions

namespace commands {

ExitCode Cancel(CommandContext& context, const Command& command) {
    HostSession session(context, StartOf(command));
    const std::vector<ListedJob> jobs = JobsOf(context, session, command);
    ConfirmMany(context, command, L"Confirm/Cancel", jobs);
    JobReports reports(context, command.asJson);
    actions::Cancel(context, session, jobs, reports);
    return reports.Finish();
}

ExitCode CancelAll(CommandContext& context, const Command& command) {
    HostSession session(context, StartOf(command));
    std::vector<ListedJob> jobs = session.FetchJobs();
    std::erase_if(jobs, [](const JobListInfo& job) { return IsOver(job.status); });
    ConfirmMany(context, command, L"Confirm/Cancel", jobs);
    JobReports reports(context, command.asJson);
    actions::CancelAll(context, session, jobs, reports);
    return reports.Finish();
}

} // namespace commands
} // namespace front_end
