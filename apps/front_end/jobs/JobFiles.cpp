#include "front_end/jobs/JobFiles.h"

#include <algorithm>
#include <utility>

#include "CommonControllerLib/PathFuncs.h"
#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "formats/RunProtocol.h"
#include "platform/files/FileSystem.h"
#include "services/Settings.h"

namespace front_end {
namespace {

/// Empty if there is no such file: the companion would log an error when reading it.
std::wstring FileIn(const std::wstring& workDirectory, const wchar_t* name) {
    if (workDirectory.empty()) {
        return {};
    }
    const std::wstring path = PathFuncs::Join(workDirectory, name);
    return platform::Exists(path) ? path : std::wstring();
}

std::wstring FileOf(const JobListInfo& job, const wchar_t* name) {
    return FileIn(job.workDir, name);
}

ResultReport ReadResult(const std::wstring& path, bool& succeeded) {
    ResultReport report;
    succeeded = false;
    if (path.empty()) {
        return report;
    }
    std::vector<std::pair<int, std::wstring>> messages;
    // An unreadable file adds nothing to the report.
    (void)ControllerCSWrapper::ParseRunScenarioResult(path, succeeded, messages, report.outputFiles);
    for (auto& [code, text] : messages) {
        report.messages.push_back(std::move(text));
    }
    return report;
}

} // namespace

std::optional<ProgressReport> LastReportOf(const JobListInfo& job) {
    const std::wstring path = FileOf(job, run_protocol::progressFileName);
    ProgressReport report;
    int progress = 0;
    if (path.empty() || !ControllerCSWrapper::ParseProgressFile(path, report.message, progress)) {
        return std::nullopt;
    }
    report.progress = std::clamp(progress, 0, 100);
    return report;
}

ResultReport ReportIn(const std::wstring& workDirectory, bool& hasSucceeded) {
    return ReadResult(FileIn(workDirectory, run_protocol::resultFileName), hasSucceeded);
}

ResultReport ResultOf(const JobListInfo& job) {
    bool hasSucceeded = false; // the status of the job says so, too
    ResultReport report = ReportIn(job.workDir, hasSucceeded);
    // Only the host's reasons for failures are beside the list. Nothing is looked for in vain: a list may be long.
    if (report.messages.empty() && job.status == JobStatus::Failed) {
        const std::wstring note = run_protocol::FailureNotePath(settings::Current()->jobListFile, job.id);
        report.messages = ReadResult(platform::Exists(note) ? note : std::wstring(), hasSucceeded).messages;
    }
    return report;
}

std::wstring OutputDirectoryOf(const JobListInfo& job) {
    if (job.status == JobStatus::Queued || job.status == JobStatus::Dequeued) {
        return {};
    }
    // The run request names the output directory from the start of the job on.
    const std::wstring path = FileOf(job, run_protocol::runInfoFileName);
    run_protocol::RunScenarioInfo request;
    std::wstring problem;
    if (!path.empty() && run_protocol::ReadRunScenarioInfoFile(path, request, problem)) {
        return request.outputFolder;
    }
    return job.status == JobStatus::Success ? job.outputDir : std::wstring();
}

std::wstring WorkDirectoryOf(const JobListInfo& job) {
    return !job.workDir.empty() && platform::IsDirectory(job.workDir) ? job.workDir : std::wstring();
}

std::vector<std::int32_t> AttemptsWithLog(const ListedJob& job) {
    constexpr std::int32_t most = 1000;
    std::vector<std::int32_t> attempts;
    for (std::int32_t attempt = std::max(1, job.attempt - most + 1); attempt <= job.attempt; ++attempt) {
        if (!FileOf(job, run_protocol::AttemptLogName(attempt).c_str()).empty()) {
            attempts.push_back(attempt);
        }
    }
    return attempts;
}

} // namespace front_end
