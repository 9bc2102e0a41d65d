#include "controller_web/api/queue/QueueStatus.h"

#include <tuple>

#include "formats/json/Writing.h"
#include "front_end/output/PortableJson.h"
#include "front_end/output/StateLayouts.h"

namespace json {

template <>
struct Layout<web::QueueStatus> {
    using Record = web::QueueStatus;
    static constexpr auto members =
        std::make_tuple(Member{"paused", &Record::isPaused}, Member{"readOnly", &Record::isReadOnly},
                        Member{"host", &Record::host}, Member{"counts", &Record::counts});
};

} // namespace json

namespace web {

std::wstring QueueJson(const QueueStatus& status) {
    std::wstring json = L"{\"version\":1";
    json::AppendMembers(status, json);
    return json + L"}";
}

std::wstring QueuePartJson(const QueueStatus& status) {
    return front_end::PortableJson(status);
}

std::wstring CountsJson(const front_end::JobCounts& counts) {
    return json::Write(counts);
}

} // namespace web
