#include "front_end/output/StateJson.h"

#include <tuple>

#include "formats/json/RecordLayouts.h"
#include "front_end/output/PortableJson.h"
#include "front_end/output/StateLayouts.h"

namespace front_end {
namespace {

struct ReportsDocument {
    std::vector<JobReport> results;
};

struct HostDocument {
    HostState host;
};

struct OverviewDocument {
    HostState host;
    QueueNumbers queue;
};

struct PausedDocument {
    bool isPaused = false;
};

struct ChecksDocument {
    std::vector<CheckResult> checks;
};

struct PathDocument {
    std::wstring path;
};

struct LogDocument {
    std::int32_t number = 0;
    std::wstring text;
};

} // namespace
} // namespace front_end

namespace json {

template <>
struct Layout<front_end::QueueNumbers> {
    static constexpr auto members = std::tuple_cat(
        std::make_tuple(Member{"paused", &front_end::QueueNumbers::isPaused}), Layout<front_end::JobCounts>::members);
};

template <>
struct Layout<front_end::ReportsDocument> {
    static constexpr auto members = std::make_tuple(Version(), Member{"results", &front_end::ReportsDocument::results});
};

template <>
struct Layout<front_end::HostDocument> {
    static constexpr auto members = std::make_tuple(Version(), Member{"host", &front_end::HostDocument::host});
};

template <>
struct Layout<front_end::OverviewDocument> {
    static constexpr auto members = std::make_tuple(Version(), Member{"host", &front_end::OverviewDocument::host},
                                                    Member{"queue", &front_end::OverviewDocument::queue});
};

template <>
struct Layout<front_end::PausedDocument> {
    static constexpr auto members = std::make_tuple(Version(), Member{"paused", &front_end::PausedDocument::isPaused});
};

template <>
struct Layout<front_end::CheckResult> {
    using Record = front_end::CheckResult;
    static constexpr auto members = std::make_tuple(Member{"name", &Record::name}, Member{"fine", &Record::isFine},
                                                    Member{"message", &Record::message});
};

template <>
struct Layout<front_end::ChecksDocument> {
    static constexpr auto members = std::make_tuple(Version(), Member{"checks", &front_end::ChecksDocument::checks});
};

template <>
struct Layout<front_end::PathDocument> {
    static constexpr auto members = std::make_tuple(Version(), Member{"path", &front_end::PathDocument::path});
};

template <>
struct Layout<front_end::LogDocument> {
    static constexpr auto members = std::make_tuple(Version(), Member{"number", &front_end::LogDocument::number},
                                                    Member{"text", &front_end::LogDocument::text});
};

} // namespace json

namespace front_end {

std::int64_t& CountOf(JobCounts& counts, JobStatus status) {
    switch (status) {
    case JobStatus::Queued:
        return counts.queued;
    case JobStatus::Running:
    case JobStatus::Canceling:
        return counts.running;
    case JobStatus::Success:
        return counts.succeeded;
    case JobStatus::Failed:
        return counts.failed;
    default:
        return counts.cancelled;
    }
}

std::wstring ReportsJson(const std::vector<JobReport>& reports) {
    return PortableLine(ReportsDocument{reports});
}

std::wstring HostJson(const HostState& host) {
    return PortableLine(HostDocument{host});
}

std::wstring OverviewJson(const HostState& host, const std::optional<QueueNumbers>& queue) {
    return queue ? PortableLine(OverviewDocument{host, *queue}) : PortableLine(HostDocument{host});
}

std::wstring PausedJson(bool isPaused) {
    return PortableLine(PausedDocument{isPaused});
}

std::wstring ChecksJson(const std::vector<CheckResult>& checks) {
    return PortableLine(ChecksDocument{checks});
}

std::wstring PathJson(const std::wstring& nativePath) {
    return PortableLine(PathDocument{nativePath});
}

std::wstring SettingsJson(const std::wstring& settings) {
    std::wstring json = L"{\"version\":1,\"settings\":" + settings + L"}\n";
    MakePortable(json);
    return json;
}

std::wstring LogPartJson(std::int32_t number, const std::wstring& text) {
    return PortableLine(LogDocument{number, text});
}

} // namespace front_end
