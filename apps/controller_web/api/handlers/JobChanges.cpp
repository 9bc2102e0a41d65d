#include "controller_web/api/handlers/JobChanges.h"

#include <algorithm>
#include <functional>

#include "controller_web/api/Answers.h"
#include "controller_web/api/queue/QueueStatus.h"
#include "formats/WebRequests.h"
#include "formats/json/Writing.h"
#include "front_end/commands/JobActions.h"
#include "front_end/commands/JobSelection.h"
#include "front_end/output/StateLayouts.h"

namespace web {
namespace {

using front_end::CommandContext;
using front_end::HostSession;
using front_end::JobReport;
using front_end::JobReports;
using front_end::Start;
using Action = std::function<void(CommandContext&, HostSession&, const std::vector<ListedJob>&, JobReports&)>;

std::vector<std::wstring> JobsIn(const Call& call) {
    std::vector<std::wstring> jobs;
    std::wstring problem;
    if (!web_requests::ReadJobs(call.request.body, jobs, problem)) {
        throw BadRequest(problem);
    }
    return jobs;
}

/// The list of jobs has the changes before the client gets the answer.
std::vector<JobReport> Change(Services& services, Start start, const std::vector<std::wstring>& names,
                              const Action& action) {
    return services.hosts.Run(start, [&](CommandContext& context, HostSession& session) {
        const std::vector<ListedJob> jobs = front_end::SelectJobs(context, session.FetchJobs({names}), names);
        JobReports reports(context, true);
        action(context, session, jobs, reports);
        std::vector<std::wstring> ids = front_end::IdsOf(jobs);
        for (const JobReport& report : reports.Reports()) {
            ids.push_back(report.id);
        }
        services.tracker.Refresh(session, ids);
        return reports.Reports();
    });
}

Response ReportsResponse(const std::vector<JobReport>& reports) {
    return JsonResponse(L"{\"version\":1,\"jobs\":" + json::Write(reports) + L"}");
}

} // namespace

Response PutQueue(Services& services, const Call& call) {
    QueueState wanted;
    std::wstring problem;
    if (!web_requests::ReadQueueState(call.request.body, wanted, problem)) {
        throw BadRequest(problem);
    }
    services.hosts.Run(Start::Never, [&](CommandContext&, HostSession& session) {
        services.tracker.SetPaused(session.SetQueueState(wanted).isPaused);
        return true;
    });
    return JsonResponse(QueueJson(services.tracker.Status()));
}

Response CancelJobs(Services& services, const Call& call) {
    return ReportsResponse(Change(services, Start::Never, JobsIn(call), front_end::actions::Cancel));
}

Response DeleteJobs(Services& services, const Call& call) {
    return ReportsResponse(Change(services, Start::Never, JobsIn(call), front_end::actions::Delete));
}

Response DeleteJob(Services& services, const Call& call) {
    const std::wstring id = RequireJob(services, call.id)->job.id;
    const std::vector<JobReport> reports = Change(services, Start::Never, {id}, front_end::actions::Delete);
    if (!reports.front().isDone) {
        throw ApiError{409, "conflict", reports.front().message};
    }
    return ReportsResponse(reports);
}

Response RepeatJobs(Services& services, const Call& call) {
    return ReportsResponse(Change(services, Start::WhenNoneRuns, JobsIn(call), front_end::actions::Repeat));
}

Response EditJobs(Services& services, const Call& call) {
    JobsEdit edit;
    std::wstring problem;
    if (!web_requests::ReadEdit(call.request.body, edit, problem)) {
        throw BadRequest(problem);
    }
    const auto action = [&](CommandContext& context, HostSession& session, const std::vector<ListedJob>& jobs,
                            JobReports& reports) {
        front_end::actions::Edit(context, session, jobs, edit, L"Outcome/Edited", reports);
    };
    return ReportsResponse(Change(services, Start::Never, edit.jobs, action));
}

} // namespace web
