#include "controller_web/api/Api.h"

#include "controller_web/api/Answers.h"
#include "controller_web/api/Description.h"
#include "controller_web/api/Metrics.h"
#include "controller_web/api/Router.h"
#include "controller_web/api/handlers/Catalogue.h"
#include "controller_web/api/handlers/InputFiles.h"
#include "controller_web/api/handlers/JobChanges.h"
#include "controller_web/api/handlers/JobFiles.h"
#include "controller_web/api/handlers/JobList.h"
#include "controller_web/http/ErrorResponse.h"

namespace web {
namespace {

class Api final : public Handler {
public:
    explicit Api(const ApiParts& parts)
        : inputDirectories(parts.inputDirectories), tracker(parts.isReadOnly), hosts(parts.context, tracker),
          uploads(parts.uploadDirectory, Uploads::Limits(), parts.context.now), services{tracker, hosts, logs, uploads,
                                                                                         parts.baseDirectory},
          router(Routes()) {}

    Response Handle(const Request& request) override {
        Response response = Answer(request);
        metrics.Count(response.status);
        return response;
    }

private:
    Response Answer(const Request& request) {
        try {
            return router.Handle(request);
        } catch (...) {
            return AnswerTo(std::current_exception());
        }
    }

    using Operation = Response (*)(Services&, const Call&);

    Route With(Method method, std::string_view pattern, Operation operation) {
        return {method, pattern, [this, operation](const Call& call) { return operation(services, call); }};
    }

    std::vector<Route> Routes() {
        return {
            With(Method::Get, "/api/v1/queue", GetQueue),
            With(Method::Put, "/api/v1/queue", PutQueue),
            With(Method::Get, "/api/v1/jobs", GetJobs),
            With(Method::Post, "/api/v1/jobs", PostJobs),
            With(Method::Post, "/api/v1/jobs/cancel", CancelJobs),
            With(Method::Post, "/api/v1/jobs/delete", DeleteJobs),
            With(Method::Post, "/api/v1/jobs/again", RepeatJobs),
            With(Method::Post, "/api/v1/jobs/edit", EditJobs),
            With(Method::Get, "/api/v1/jobs/{id}", GetJob),
            With(Method::Delete, "/api/v1/jobs/{id}", DeleteJob),
            With(Method::Get, "/api/v1/jobs/{id}/log", GetLog),
            With(Method::Get, "/api/v1/jobs/{id}/files", GetFiles),
            With(Method::Get, "/api/v1/jobs/{id}/files/{path}", GetFile),
            With(Method::Get, "/api/v1/jobs/{id}/files.zip", GetArchive),
            With(Method::Get, "/api/v1/scenarios", GetScenarios),
            With(Method::Get, "/api/v1/scenarios/{id}/parameters", GetParameterSets),
            With(Method::Post, "/api/v1/uploads", PostUpload),
            {Method::Get, "/api/v1/inputs", [this](const Call& call) { return GetInputs(inputDirectories(), call); }},
            {Method::Get, "/api/v1/events", [this](const Call& call) { return Events(call); }},
            {Method::Get, "/api/v1/openapi.json",
             [](const Call&) { return TextResponse(200, "application/json", description); }},
            {Method::Get, "/metrics",
             [this](const Call&) { return TextResponse(200, "text/plain; version=0.0.4", metrics.Text(tracker)); }},
        };
    }

    Response Events(const Call& call) {
        std::unique_ptr<EventFeed> feed = tracker.Events().Open(call.request.lastEventId);
        if (feed == nullptr) {
            throw ApiError{429, "too_many_requests", L"There are too many clients of the event stream."};
        }
        Response response;
        response.headers = {{"Content-Type", "text/event-stream"}, {"Cache-Control", "no-store"}};
        response.body = std::move(feed);
        return response;
    }

    const std::function<std::vector<std::wstring>()> inputDirectories;
    QueueTracker tracker;
    HostThread hosts;
    LogFeeds logs;
    Uploads uploads;
    Services services;
    Metrics metrics;
    const Router router;
};

} // namespace

std::unique_ptr<Handler> MakeApi(const ApiParts& parts) {
    return std::make_unique<Api>(parts);
}

} // namespace web
