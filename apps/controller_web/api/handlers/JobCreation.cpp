#include <optional>
#include <tuple>

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "controller_web/api/Answers.h"
#include "controller_web/api/handlers/JobChanges.h"
#include "formats/JobsFile.h"
#include "formats/json/RecordLayouts.h"
#include "formats/json/Writing.h"
#include "front_end/commands/Problems.h"

namespace web {
namespace {

struct CreatedJob {
    std::wstring id;
    std::int32_t number = 0;
};

struct Refusal {
    std::int64_t request = 0;
    /// Nothing: the whole request.
    std::optional<std::int64_t> inputSet;
    std::wstring message;
};

struct Creation {
    std::vector<CreatedJob> jobs;
    std::vector<Refusal> refused;
};

} // namespace
} // namespace web

namespace json {

template <>
struct Layout<web::CreatedJob> {
    static constexpr auto members =
        std::make_tuple(Member{"id", &web::CreatedJob::id}, Member{"number", &web::CreatedJob::number});
};

template <>
struct Layout<web::Refusal> {
    using Record = web::Refusal;
    static constexpr auto members =
        std::make_tuple(Member{"request", &Record::request}, OptionalMember{"inputSet", &Record::inputSet},
                        Member{"message", &Record::message});
};

template <>
struct Layout<web::Creation> {
    static constexpr auto members =
        std::make_tuple(Version(), Member{"jobs", &web::Creation::jobs}, Member{"refused", &web::Creation::refused});
};

} // namespace json

namespace web {
namespace {

std::vector<ScheduledRequest> RequestsIn(const Services& services, const Call& call) {
    std::vector<ScheduledRequest> requests;
    std::wstring problem;
    if (!jobs_file::ReadText(call.request.body, L"The request", requests, problem, services.baseDirectory)) {
        throw BadRequest(problem);
    }
    return requests;
}

void TakeResult(std::size_t request, const JobEnqueueResult& result, Creation& creation) {
    const auto number = static_cast<std::int64_t>(request);
    if (result.jobIds.empty()) {
        creation.refused.push_back({number, std::nullopt, front_end::RefusalReason(result, 0)});
    }
    for (std::size_t set = 0; set < result.jobIds.size(); ++set) {
        if (result.jobIds[set].id.empty()) {
            creation.refused.push_back({number, static_cast<std::int64_t>(set), front_end::RefusalReason(result, set)});
        } else {
            creation.jobs.push_back({result.jobIds[set].id, result.jobIds[set].seqId});
        }
    }
}

Creation Create(Services& services, std::vector<ScheduledRequest> requests) {
    return services.hosts.Run(front_end::Start::WhenNoneRuns,
                              [&](front_end::CommandContext&, front_end::HostSession& session) {
                                  Creation creation;
                                  for (std::size_t index = 0; index < requests.size(); ++index) {
                                      requests[index].requestId = ControllerCSWrapper::CreateGuid();
                                      TakeResult(index, session.Enqueue(requests[index]), creation);
                                  }
                                  std::vector<std::wstring> ids;
                                  for (const CreatedJob& job : creation.jobs) {
                                      ids.push_back(job.id);
                                  }
                                  services.tracker.Refresh(session, ids);
                                  return creation;
                              });
}

} // namespace

Response PostJobs(Services& services, const Call& call) {
    const Creation creation = Create(services, RequestsIn(services, call));
    if (creation.jobs.empty() && !creation.refused.empty()) {
        throw ApiError{422, "refused", L"No job was created. " + creation.refused.front().message,
                       L",\"refused\":" + json::Write(creation.refused)};
    }
    return JsonResponse(json::Write(creation), 201);
}

} // namespace web
