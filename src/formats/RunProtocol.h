#pragma once

#include "CommonControllerLib/Export.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "formats/RunFileNames.h"

/// What is exchanged about one run of a scenario, in the direction that `ControllerCSWrapper` does not take: the side
/// of function modules and of the runner. Functions that return false leave their outputs as they were.
namespace run_protocol {

/// The environment variable of every process of a run, runner and scenario, and what it says: the native path of the
/// run's request.
inline constexpr wchar_t runInfoVariable[] = L"CONTROLLER_RUN_INFO";
CONTROLLER_API std::wstring RunInfoPath(const std::wstring& workDir);

/// The request that the function "RunScenario" takes.
struct RunScenarioInfo {
    std::wstring jobId;
    std::wstring scenarioPath;
    std::vector<std::wstring> inputFiles;
    std::wstring outputFolder;
    std::wstring workDir;
    std::wstring runArgument;

    bool operator==(const RunScenarioInfo&) const = default;
};

struct RunScenarioResult {
    std::wstring jobId;
    bool succeeded = false;
    /// Code and text.
    std::vector<std::pair<int, std::wstring>> messages;
    std::vector<std::wstring> outputFiles;

    bool operator==(const RunScenarioResult&) const = default;
};

/// Read the request; `problem` says what is wrong with it.
[[nodiscard]] CONTROLLER_API bool ParseRunScenarioInfo(const std::wstring& json, RunScenarioInfo& info,
                                                       std::wstring& problem);
[[nodiscard]] CONTROLLER_API bool ReadRunScenarioInfoFile(const std::wstring& path, RunScenarioInfo& info,
                                                          std::wstring& problem);

/// JSON texts of both directions.
CONTROLLER_API std::wstring SerializeRunScenarioInfo(const RunScenarioInfo& info);
CONTROLLER_API std::wstring SerializeRunScenarioResult(const RunScenarioResult& result);
CONTROLLER_API std::wstring SerializeProgress(const std::wstring& jobId, int progress, const std::wstring& message);

/// Replaces a file of a work directory by such a text, all or nothing. Not flushed to the disk: a job does not outlive
/// the machine. False (logged) when it cannot be written; a work directory that is missing was removed with its job and
/// is not made again.
[[nodiscard]] CONTROLLER_API bool WriteFile(const std::wstring& json, const std::wstring& path);

/// Makes a job's work directory, for this user alone, with what is missing on the way to it. False, with the end of a
/// sentence about the directory in `problem`, when it cannot be made or other users could exchange it.
[[nodiscard]] CONTROLLER_API bool MakeWorkDirectory(const std::wstring& workDir, std::wstring& problem);

/// True for ids as the engine makes them: at most eight lower-case hexadecimal digits. Anything else could lead to
/// another file.
[[nodiscard]] bool IsJobId(std::wstring_view text);

/// Where the reason of a failed job stands when its work directory cannot hold it: a file beside the job list, in the
/// layout of a result. Empty for what is no job's id.
CONTROLLER_API std::wstring FailureNotePath(const std::wstring& jobListFile, const std::wstring& jobId);
/// The directory of these files.
CONTROLLER_API std::wstring FailureNotesDirectory(const std::wstring& jobListFile);

/// The answer of "RunScenario": the handle (on Linux the pidfd) as hexadecimal text.
CONTROLLER_API std::wstring SerializeProcessHandle(void* process);

} // namespace run_protocol
