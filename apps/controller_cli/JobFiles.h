#pragma once

#include "CommonControllerLib/JobRecords.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// What the files of a job's work directory say. A file that is missing or cannot be read says nothing.
namespace controller_cli {

/// What a scenario last reported while it ran.
struct ProgressReport {
    /// 0 to 100.
    std::int32_t progress = 0;
    std::wstring message;
};

/// The last report in the job's progress file.
std::optional<ProgressReport> LastReportOf(const JobListInfo& job);

/// What a scenario's result says beside success or failure.
struct ResultReport {
    std::vector<std::wstring> messages;
    std::vector<std::wstring> outputFiles;
};

/// The reason that the host has left beside the job list where the result has none is among the messages.
ResultReport ResultOf(const JobListInfo& job);

/// The directory that was made for the job's results. Empty while it has none: `outputDir` is the directory that it is
/// to be made in until the job has ended, and stays so when the job ends before it runs or is lost.
std::wstring OutputDirectoryOf(const JobListInfo& job);

/// The job's work directory; empty while there is none, and when it has been removed.
std::wstring WorkDirectoryOf(const JobListInfo& job);

} // namespace controller_cli
