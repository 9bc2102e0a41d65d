#pragma once

#include "CommonControllerLib/JobRecords.h"
#include "formats/Scheduling.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// Reads the files of a job's work directory. A missing or unreadable file counts as empty.
namespace front_end {

/// The last progress report of a running scenario.
struct ProgressReport {
    /// Percent, 0 to 100.
    std::int32_t progress = 0;
    std::wstring message;
};

/// The last report in the job's progress file.
std::optional<ProgressReport> LastReportOf(const JobListInfo& job);

/// The contents of a scenario's result besides success or failure.
struct ResultReport {
    std::vector<std::wstring> messages;
    std::vector<std::wstring> outputFiles;
};

/// The result in a work directory.
ResultReport ReportIn(const std::wstring& workDirectory, bool& hasSucceeded);

/// The messages include the reason that the host wrote beside the job list if the result has none.
ResultReport ResultOf(const JobListInfo& job);

/// The directory that was created for the job's results; empty if there is none yet. `outputDir` is its parent until
/// the job has ended, and stays so if the job ends before it runs or is lost.
std::wstring OutputDirectoryOf(const JobListInfo& job);

/// The job's work directory; empty if it does not exist yet or was removed.
std::wstring WorkDirectoryOf(const JobListInfo& job);

/// The attempts before the last one whose logs were kept, in their order; at most the last 1000.
std::vector<std::int32_t> AttemptsWithLog(const ListedJob& job);

} // namespace front_end
