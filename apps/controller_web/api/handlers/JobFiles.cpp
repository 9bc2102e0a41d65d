#include "controller_web/api/handlers/JobFiles.h"

#include <algorithm>
#include <numeric>
#include <tuple>

#include "CommonControllerLib/JobEntry.h"
#include "controller_web/api/Answers.h"
#include "controller_web/api/files/FileContent.h"
#include "controller_web/api/files/FilesBelow.h"
#include "controller_web/api/files/ZipStream.h"
#include "controller_web/http/MediaType.h"
#include "formats/JobStates.h"
#include "formats/RunFileNames.h"
#include "formats/json/Writing.h"
#include "front_end/jobs/JobFiles.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "text/Numbers.h"
#include "text/Text.h"

namespace web {
namespace {

constexpr const char* logType = "text/plain; charset=utf-8";
/// Neither scripts nor anything from elsewhere: the content is that of a scenario, not of this program.
constexpr const char* sandboxPolicy =
    "sandbox; default-src 'none'; style-src 'unsafe-inline'; img-src data:; frame-ancestors 'self'";

struct FileReport {
    std::wstring path;
    std::int64_t size = 0;
    std::wstring modified;
    std::wstring type;
};

struct FilesDocument {
    bool isComplete = true;
    std::vector<FileReport> files;
};

} // namespace
} // namespace web

namespace json {

template <>
struct Layout<web::FileReport> {
    using Record = web::FileReport;
    static constexpr auto members =
        std::make_tuple(Member{"path", &Record::path}, Member{"size", &Record::size},
                        Member{"modified", &Record::modified}, Member{"type", &Record::type});
};

template <>
struct Layout<web::FilesDocument> {
    using Record = web::FilesDocument;
    static constexpr auto members =
        std::make_tuple(Version(), Member{"complete", &Record::isComplete}, Member{"files", &Record::files});
};

} // namespace json

namespace web {
namespace {

/// Only what the job itself has created: before it starts, the directory is that of all its jobs.
std::wstring RequireOutputDirectory(Services& services, const Call& call) {
    const Row row = RequireJob(services, call.id);
    std::wstring directory = front_end::OutputDirectoryOf(row->job);
    if (directory.empty() || row->job.inputFiles.empty() || !platform::IsDirectory(directory)) {
        throw NotFound(L"Job " + std::to_wstring(row->job.seqId) + L" has no output directory.");
    }
    return directory;
}

[[noreturn]] void FailListing(const std::wstring& directory, const platform::Error& error) {
    throw ApiError{500, "internal_error", platform::ToNativeText(directory) + L" cannot be listed: " + error.Text()};
}

Listing RequireListing(const std::wstring& directory) {
    Listing listing;
    if (const platform::Error result = ListFilesBelow(directory, listing); !result) {
        FailListing(directory, result);
    }
    return listing;
}

std::string TypeOf(const std::wstring& path) {
    return std::string(MediaTypeOf(text::ToUtf8(path)));
}

bool IsActiveContent(const std::string& type) {
    return type.starts_with("text/html") || type.find("xml") != std::string::npos;
}

/// The name for the saved file, without what a header cannot hold.
std::string AttachmentName(std::int32_t number) {
    return "attachment; filename=\"job-" + std::to_string(number) + ".zip\"";
}

Response FollowedLog(Services& services, const Row& row) {
    std::unique_ptr<EventFeed> feed =
        services.logs.Open(row->job.workDir, [&tracker = services.tracker, id = row->job.id] {
            const Row now = tracker.Jobs().FindId(id);
            return now == nullptr || IsOver(now->job.status);
        });
    if (feed == nullptr) {
        throw ApiError{429, "too_many_requests", L"Too many logs are followed at once. Close another one."};
    }
    Response response;
    response.headers = {{"Content-Type", logType}};
    response.body = std::move(feed);
    return response;
}

bool IsFollowed(const Request& request) {
    const std::wstring follow = QueryValue(request, "follow");
    if (!follow.empty() && follow != L"1") {
        throw BadRequest(L"follow: expected 1, found " + follow + L".");
    }
    return !follow.empty();
}

Response LogFile(const Request& request, const ListedJob& job, const std::wstring& name) {
    platform::File file;
    if (job.workDir.empty() || !OpenFileBelow(job.workDir, {name}, file)) {
        throw NotFound(L"Job " + std::to_wstring(job.seqId) + L" has no such log.");
    }
    return FileResponse(request, std::move(file), logType);
}

/// The number of the attempt decides only which of the names of logs it is.
Response LogOfAttempt(const Call& call, const ListedJob& job, const std::wstring& typed) {
    const std::int32_t attempt = numbers::ReadInteger(typed);
    if (attempt < 1 || numbers::DecimalText(attempt) != typed || IsFollowed(call.request)) {
        throw BadRequest(L"attempt: expected the number of an earlier attempt, without follow, found " + typed + L".");
    }
    return LogFile(call.request, job, run_protocol::AttemptLogName(attempt));
}

} // namespace

Response GetLog(Services& services, const Call& call) {
    const bool isFollowed = IsFollowed(call.request);
    const Row row = RequireJob(services, call.id);
    if (const std::wstring attempt = QueryValue(call.request, "attempt"); !attempt.empty()) {
        return LogOfAttempt(call, row->job, attempt);
    }
    if (isFollowed && !IsOver(row->job.status) && !row->job.workDir.empty()) {
        return FollowedLog(services, row);
    }
    return LogFile(call.request, row->job, run_protocol::logFileName);
}

Response GetFiles(Services& services, const Call& call) {
    const Listing listing = RequireListing(RequireOutputDirectory(services, call));
    FilesDocument document;
    document.isComplete = listing.isComplete;
    for (const FoundEntry& entry : listing.entries) {
        document.files.push_back({entry.path, static_cast<std::int64_t>(entry.size),
                                  JobEntry::CreateTimeString(entry.modified), text::FromUtf8(TypeOf(entry.path))});
    }
    return JsonResponse(json::Write(document));
}

Response GetFile(Services& services, const Call& call) {
    const std::wstring directory = RequireOutputDirectory(services, call);
    std::vector<std::wstring> names;
    std::transform(call.path.begin(), call.path.end(), std::back_inserter(names),
                   [](const std::string& name) { return text::FromUtf8(name); });
    platform::File file;
    if (!OpenFileBelow(directory, names, file)) {
        throw NotFound(L"There is no such file among the results of the job, or it cannot be read.");
    }
    const std::string type = TypeOf(names.back());
    Response response = FileResponse(call.request, std::move(file), type);
    response.headers.emplace_back("X-Content-Type-Options", "nosniff");
    if (IsActiveContent(type)) {
        response.headers.emplace_back("Content-Security-Policy", sandboxPolicy);
    }
    return response;
}

Response GetArchive(Services& services, const Call& call) {
    const std::wstring directory = RequireOutputDirectory(services, call);
    const Listing listing = RequireListing(directory);
    const std::uint64_t size =
        std::accumulate(listing.entries.begin(), listing.entries.end(), std::uint64_t{0},
                        [](std::uint64_t sum, const FoundEntry& entry) { return sum + entry.size; });
    if (size >= largestArchive || !listing.isComplete) {
        throw ApiError{413, "too_large",
                       L"The results are too large for an archive: at most 4 GB and 10,000 files. They are in " +
                           platform::ToNativeText(directory) + L"."};
    }
    Response response;
    response.headers = {{"Content-Type", "application/zip"},
                        {"Content-Disposition", AttachmentName(RequireJob(services, call.id)->job.seqId)}};
    response.body = MakeZipStream(directory, listing.entries);
    return response;
}

} // namespace web
