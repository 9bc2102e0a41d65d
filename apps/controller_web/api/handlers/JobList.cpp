#include "controller_web/api/handlers/JobList.h"

#include "controller_web/api/Answers.h"
#include "controller_web/api/handlers/JobDetailJson.h"
#include "controller_web/api/handlers/JobListQuery.h"
#include "controller_web/api/queue/QueueStatus.h"
#include "text/Text.h"

namespace web {
namespace {

/// At the start of this program the list is being fetched. Throws like `HostThread::Run` without a host.
void RequireKnown(Services& services) {
    if (!services.tracker.IsKnown()) {
        services.hosts.Run(front_end::Start::Never,
                           [](front_end::CommandContext&, front_end::HostSession&) { return true; });
    }
}

std::wstring PageJson(const JobPage& page, JobEndings::Answer answer) {
    std::wstring json = L"[";
    for (const front_end::JobRow* const row : page.rows) {
        json += json.back() == L'[' ? L"" : L",";
        answer.Append(*row, json);
    }
    return json + L"]";
}

} // namespace

Response GetJobs(Services& services, const Call& call) {
    const JobListQuery query = ReadJobListQuery(call.request);
    RequireKnown(services);
    // Before the jobs, which are then at least as new.
    const std::wstring position = text::FromUtf8(services.tracker.Events().Position());
    const Snapshot snapshot = services.tracker.Jobs().Take();
    const JobPage page = PageOf(snapshot, query);
    return JsonResponse(L"{\"version\":1,\"total\":" + std::to_wstring(page.total) + L",\"counts\":" +
                        CountsJson(snapshot.counts) + L",\"event\":\"" + position + L"\",\"jobs\":" +
                        PageJson(page, {services.tracker.Endings(), query.members}) + L"}");
}

Response GetJob(Services& services, const Call& call) {
    return JsonResponse(JobDetailJson(FetchJob(services, call.id)));
}

/// The state that was last known, without waiting for the host.
Response GetQueue(Services& services, const Call& /*call*/) {
    return JsonResponse(QueueJson(services.tracker.Status()));
}

} // namespace web
