#pragma once

#include "CommonControllerLib/Export.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "formats/RunFileNames.h"

/// The data of one run of a scenario, in the direction that `ControllerCSWrapper` does not cover: that of function
/// modules and of the runner. Functions that return false leave their outputs unchanged.
namespace run_protocol {

/// The environment variable that every process of a run has, runner and scenario. Its value is the native path of the
/// run request.
inline constexpr wchar_t runInfoVariable[] = L"CONTROLLER_RUN_INFO";
CONTROLLER_API std::wstring RunInfoPath(const std::wstring& workDir);

/// Exit codes of a runner that say why the scenario has failed: it crashed, or it exceeded its time limit.
inline constexpr std::int32_t crashedExitCode = 6;
inline constexpr std::int32_t timedOutExitCode = 7;

/// The argument of the function "RunScenario".
struct RunScenarioInfo {
    std::wstring jobId;
    std::wstring scenarioPath;
    std::vector<std::wstring> inputFiles;
    std::wstring outputFolder;
    std::wstring workDir;
    std::wstring runArgument;

    bool operator==(const RunScenarioInfo&) const = default;
};

/// One report of a running scenario.
struct ProgressReport {
    /// Percent, 0 to 100.
    std::int32_t progress = 0;
    std::wstring message;
};

struct RunScenarioResult {
    std::wstring jobId;
    bool succeeded = false;
    /// Code and text.
    std::vector<std::pair<int, std::wstring>> messages;
    std::vector<std::wstring> outputFiles;

    bool operator==(const RunScenarioResult&) const = default;
};

/// Parse or read the run request. On failure return false and set `problem` to the error.
[[nodiscard]] CONTROLLER_API bool ParseRunScenarioInfo(const std::wstring& json, RunScenarioInfo& info,
                                                       std::wstring& problem);
[[nodiscard]] CONTROLLER_API bool ReadRunScenarioInfoFile(const std::wstring& path, RunScenarioInfo& info,
                                                          std::wstring& problem);

/// Reads the reports in the progress file of a run, the latest last. On failure returns false and sets `problem`.
[[nodiscard]] CONTROLLER_API bool ReadProgressReports(const std::wstring& path, std::vector<ProgressReport>& reports,
                                                      std::wstring& problem);

/// Serialize in both directions.
CONTROLLER_API std::wstring SerializeRunScenarioInfo(const RunScenarioInfo& info);
CONTROLLER_API std::wstring SerializeRunScenarioResult(const RunScenarioResult& result);
CONTROLLER_API std::wstring SerializeProgress(const std::wstring& jobId, int progress, const std::wstring& message);

/// Replaces a file of a work directory atomically. Not flushed to disk, because a job does not survive a crash of the
/// machine. On failure logs the error and returns false. A missing work directory is not created again: it was removed
/// together with its job.
[[nodiscard]] CONTROLLER_API bool WriteFile(const std::wstring& json, const std::wstring& path);

/// Creates a job's work directory and its missing parents, accessible to this user only. On failure (it cannot be
/// created, or other users could replace it) returns false and sets `problem` to the end of a sentence about the
/// directory.
[[nodiscard]] CONTROLLER_API bool MakeWorkDirectory(const std::wstring& workDir, std::wstring& problem);

/// True for the format of the engine's job ids: one to eight lower-case hexadecimal digits. Other texts could form a
/// path to another file.
[[nodiscard]] bool IsJobId(std::wstring_view text);

/// Returns the path of the file that holds the reason of a failed job if its work directory cannot: beside the job
/// list, in the layout of a result. Returns an empty path if `jobId` is not the id of a job.
CONTROLLER_API std::wstring FailureNotePath(const std::wstring& jobListFile, const std::wstring& jobId);
/// Returns the directory of these files.
CONTROLLER_API std::wstring FailureNotesDirectory(const std::wstring& jobListFile);

/// Serializes the answer of "RunScenario": the handle (on Linux the pidfd) as hexadecimal text.
CONTROLLER_API std::wstring SerializeProcessHandle(void* process);

} // namespace run_protocol
