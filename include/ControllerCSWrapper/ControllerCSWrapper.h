#pragma once

#include "CommonControllerLib/Export.h"
#include "CommonControllerLib/JobRecords.h"
#include "CommonControllerLib/ScenarioRecords.h"

#include <string>
#include <utility>
#include <vector>

/// What the controller library asks of the application: its settings, its log file, and every JSON text.
///
/// All functions are static, throw nothing, and may be called from several threads at once. One that returns false
/// leaves its outputs as they were. Output lists are appended to, never cleared. Why a text or file was refused goes to
/// the log, with file, line and column.
class CONTROLLER_API ControllerCSWrapper {
public:
    ControllerCSWrapper() = delete;

    // Log file

    /// From now on writes the log file at `path`. Before the first call the settings' log file is used; without one,
    /// nothing is written.
    static void ChangeLogFilePath(const std::wstring& path);
    /// Append one record to the log file; line breaks in the message are escaped.
    static void WriteInfoLog(const std::wstring& message);
    static void WriteWarnLog(const std::wstring& message);
    static void WriteErrorLog(const std::wstring& message);
    static void WriteDebugLog(const std::wstring& message);

    // Settings

    /// The directory below which every job has its work directory; absolute.
    static std::wstring GetWorkDirectory();
    /// The full path of the job list file.
    static std::wstring GetJobListFile();
    /// True when old jobs are to be deleted automatically; `days` is then their age limit in days.
    static bool IsAutoDeleteWorkFolder(int& days);
    /// The directories to search for scenarios, in order; absolute paths.
    static std::vector<ScenarioDirectory> GetScenarioDirectoryList();
    /// The culture selected in the settings, such as "de-DE".
    static std::wstring GetCultureInfo();
    static std::wstring GetDefaultCultureInfo();

    // Files

    /// The last part of a path (either separator) without its last extension: "part.prt" of "C:\m\part.prt.3".
    static std::wstring GetFileNameWithoutExtension(const std::wstring& path);
    /// A new random identifier: 8-4-4-4-12 lower-case hexadecimal digits.
    static std::wstring CreateGuid();
    /// Replaces the file `path` by `json` in UTF-8, all or nothing, flushed to the disk; missing parent directories are
    /// made. When it is the job list file, the last good one is kept beside it as ".bak".
    [[nodiscard]] static bool CreateJsonFile(const std::wstring& json, const std::wstring& path);
    /// The text of a JSON file (UTF-8, with or without a mark); false when it cannot be read or is not JSON.
    [[nodiscard]] static bool ReadJsonFile(const std::wstring& path, std::wstring& text);
    /// Removes a job's work directory with its contents; no link or junction is followed. Refuses (false and a warning)
    /// a text that is empty, relative or a root, whatever does not lie below the configured work directory, and what
    /// can be reached only through a link. The text counts up to its first U+0000. A directory that is missing is a
    /// success.
    [[nodiscard]] static bool RemoveJobWorkDirectory(const std::wstring& workDir);

    // Messages: an object with one member, its name

    static std::wstring Serialize(const std::wstring& name, const EnqueueJobsInfo& info);
    static std::wstring Serialize(const std::wstring& key, const std::vector<JobListInfo>& records);
    static std::wstring Serialize(const std::wstring& name, const std::vector<std::wstring>& texts);
    static std::wstring Serialize(const std::wstring& name);

    /// Read a message of any name into `value`. A missing member takes its default; a member of the wrong type refuses
    /// the whole text. Lists are appended to.
    [[nodiscard]] static bool Deserialize(const std::wstring& text, std::vector<JobListInfo>& value);
    [[nodiscard]] static bool Deserialize(const std::wstring& text, JobEnqueueResult& value);
    [[nodiscard]] static bool Deserialize(const std::wstring& text, std::vector<JobStatusInfo>& value);
    [[nodiscard]] static bool Deserialize(const std::wstring& text, std::vector<ScenarioInfo>& value);
    [[nodiscard]] static bool Deserialize(const std::wstring& text, std::vector<ScenarioParameterSetInfo>& value);
    [[nodiscard]] static bool Deserialize(const std::wstring& text, std::vector<std::wstring>& value);
    [[nodiscard]] static bool Deserialize(const std::wstring& text, std::wstring& value);
    /// A process handle, written as hexadecimal text.
    [[nodiscard]] static bool Deserialize(const std::wstring& text, void*& value);

    // Job list and jobs file

    /// Reads the job list file. An unreadable one is kept beside it as ".corrupt-<time>"; when its ".bak" is good, that
    /// is read and a warning says so. Of a list that is missing the backup is not read: somebody has deleted it.
    [[nodiscard]] static bool ParseJobList(const std::wstring& path, std::vector<JobListInfo>& records);
    /// Reads the requests of a jobs file; relative paths in it are relative to its directory.
    [[nodiscard]] static bool ReadEnqueueJobsFile(const std::wstring& path, std::vector<EnqueueJobsInfo>& infos);

    // What scenarios are told and report

    [[nodiscard]] static bool ParseProgressFile(const std::wstring& path, std::wstring& message, int& progress);
    [[nodiscard]] static bool ParseProgressFileString(const std::wstring& json, std::wstring& jobId,
                                                      std::wstring& message, int& progress);
    /// `succeeded`: the scenario's own verdict; `pairs`: its messages with their codes; `texts`: its output files.
    [[nodiscard]] static bool ParseRunScenarioResult(const std::wstring& path, bool& succeeded,
                                                     std::vector<std::pair<int, std::wstring>>& pairs,
                                                     std::vector<std::wstring>& texts);
    [[nodiscard]] static bool ParseRunScenarioResultString(const std::wstring& json, std::wstring& jobId,
                                                           bool& succeeded,
                                                           std::vector<std::pair<int, std::wstring>>& pairs,
                                                           std::vector<std::wstring>& texts);
    /// Builds the request that the function "RunScenario" takes.
    [[nodiscard]] static bool CreateRunScenarioInfoString(const std::wstring& jobId, const std::wstring& scenarioPath,
                                                          const std::vector<std::wstring>& inputFiles,
                                                          const std::wstring& outputFolder, const std::wstring& workDir,
                                                          const std::wstring& runArgument, std::wstring& json);

    // Scenarios

    /// Reads the manifest of a packaged scenario (".esa"): fills `displayName` and `inputs`. False when it is not a
    /// usable package.
    [[nodiscard]] static bool GetScenarioInfo(const std::wstring& path, ScenarioInfo& info);
    /// Appends the parameter sets of a scenario (".rb" or ".esa"). A scenario that offers none is a success.
    [[nodiscard]] static bool GetScenarioParameterSetInfo(const std::wstring& scenarioPath,
                                                          std::vector<ScenarioParameterSetInfo>& out);

    // Strings

    /// The JSON text of the member `name` of the object `json`, a plain string as its text; false when there is no such
    /// member.
    [[nodiscard]] static bool GetStringResources(const std::wstring& json, const std::wstring& name,
                                                 std::wstring& member);
};
