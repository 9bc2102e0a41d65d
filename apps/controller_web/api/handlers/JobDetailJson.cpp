#include "controller_web/api/handlers/JobDetailJson.h"

#include <optional>
#include <tuple>
#include <vector>

#include "CommonControllerLib/PathFuncs.h"
#include "formats/JobStates.h"
#include "formats/Provenance.h"
#include "formats/RunLayouts.h"
#include "formats/RunProtocol.h"
#include "formats/json/ProvenanceLayouts.h"
#include "formats/json/Writing.h"
#include "front_end/jobs/JobFiles.h"
#include "front_end/jobs/JobRow.h"
#include "front_end/output/JsonOutput.h"
#include "platform/files/FileSystem.h"

namespace web {
namespace {

constexpr std::size_t mostReports = 1000;

/// What a job has beside its row.
struct JobDetails {
    std::vector<run_protocol::ProgressReport> progressReports;
    bool hasLog = false;
    std::vector<std::int32_t> attemptLogs;
    std::wstring extraText;
    std::optional<provenance::Record> provenance;
};

/// Empty if the job has no such file.
std::wstring FileIn(const std::wstring& directory, const wchar_t* name) {
    const std::wstring path = directory.empty() ? std::wstring() : PathFuncs::Join(directory, name);
    return !path.empty() && platform::Exists(path) ? path : std::wstring();
}

std::vector<run_protocol::ProgressReport> ReportsOf(const front_end::JobRow& row) {
    std::vector<run_protocol::ProgressReport> reports;
    const std::wstring path = FileIn(row.workDirectory, run_protocol::progressFileName);
    std::wstring problem;
    // A file that is being written adds nothing.
    if (!path.empty() && run_protocol::ReadProgressReports(path, reports, problem) && reports.size() > mostReports) {
        reports.erase(reports.begin(), reports.end() - mostReports);
    }
    return reports;
}

/// Nothing if there is none of this job: the directory may be the user's own.
std::optional<provenance::Record> ProvenanceOf(const front_end::JobRow& row) {
    const std::wstring path = HasEnded(row.job.status) ? FileIn(row.outputFolder, provenance::fileName) : L"";
    provenance::Record record;
    std::wstring problem;
    const bool isRead = !path.empty() && provenance::ReadRecord(path, record, problem);
    return isRead && record.jobId == row.job.id ? std::optional(std::move(record)) : std::nullopt;
}

JobDetails DetailsOf(const front_end::JobRow& row) {
    return {ReportsOf(row), !FileIn(row.workDirectory, run_protocol::logFileName).empty(),
            front_end::AttemptsWithLog(row.job), row.job.extraText, ProvenanceOf(row)};
}

} // namespace
} // namespace web

namespace json {

template <>
struct Layout<web::JobDetails> {
    using Record = web::JobDetails;
    static constexpr auto members = std::make_tuple(
        Member{"progressReports", &Record::progressReports}, Member{"hasLog", &Record::hasLog},
        OptionalMember{"attemptLogs", &Record::attemptLogs}, OptionalMember{"extraText", &Record::extraText},
        OptionalMember{"provenance", &Record::provenance});
};

} // namespace json

namespace web {

std::wstring JobDetailJson(const ListedJob& job) {
    const front_end::JobRow row = front_end::ViewOf(job);
    std::wstring json = L"{\"version\":1,\"job\":";
    front_end::AppendJob(row, front_end::JobMembers::All(), json);
    json.pop_back();
    json::AppendMembers(DetailsOf(row), json);
    return json + L"}}";
}

} // namespace web
