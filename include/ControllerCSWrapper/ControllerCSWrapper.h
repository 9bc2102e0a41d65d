#pragma once

#include "CommonControllerLib/Export.h"
#include "CommonControllerLib/JobRecords.h"
#include "CommonControllerLib/ScenarioRecords.h"

#include <string>
#include <utility>
#include <vector>

/// The functions that the controller library needs from the application: settings, log file, and JSON conversion.
///
/// Threads: any, concurrently. No function throws. A function that returns false leaves its outputs unchanged. Output
/// lists are appended to and never cleared. The reason why a text or file was rejected is logged with file, line and
/// column; a text function returns an empty text when memory runs out.
class CONTROLLER_API ControllerCSWrapper {
public:
    ControllerCSWrapper() = delete;

    // Log file

    /// Writes the log file at `path` from now on. Before the first call the log file of the settings is used; without
    /// one, nothing is written.
    static void ChangeLogFilePath(const std::wstring& path);
    /// Appends one record to the log file; line breaks in the message are escaped.
    static void WriteInfoLog(const std::wstring& message);
    /// The same for a warning.
    static void WriteWarnLog(const std::wstring& message);
    /// The same for an error.
    static void WriteErrorLog(const std::wstring& message);
    /// The same for a debug message.
    static void WriteDebugLog(const std::wstring& message);

    // Settings

    /// The absolute path of the directory that contains the work directories of all jobs.
    static std::wstring GetWorkDirectory();
    /// The full path of the job list file.
    static std::wstring GetJobListFile();
    /// Returns true when old jobs are to be deleted automatically; sets `days` to the age limit in days.
    static bool IsAutoDeleteWorkFolder(int& days);
    /// The absolute paths of the directories to search for scenarios, in order.
    static std::vector<ScenarioDirectory> GetScenarioDirectoryList();
    /// The culture selected in the settings, such as "de-DE".
    static std::wstring GetCultureInfo();
    /// The culture whose texts are used where the selected one has none.
    static std::wstring GetDefaultCultureInfo();

    // Files

    /// The last part of a path (either separator) without its last extension: "part.prt" of "C:\m\part.prt.3".
    static std::wstring GetFileNameWithoutExtension(const std::wstring& path);
    /// A new random identifier: 8-4-4-4-12 lower-case hexadecimal digits.
    static std::wstring CreateGuid();
    /// Replaces the file `path` by `json` in UTF-8, atomically and flushed to disk; creates missing parent directories.
    /// If `path` is the job list file, its last valid version is kept beside it as ".bak".
    [[nodiscard]] static bool CreateJsonFile(const std::wstring& json, const std::wstring& path);
    /// Reads a JSON file (UTF-8, with or without a BOM). Returns false when it cannot be read or is not JSON.
    [[nodiscard]] static bool ReadJsonFile(const std::wstring& path, std::wstring& text);
    /// Removes a job's work directory with its contents; follows no link or junction. `workDir` counts up to its first
    /// U+0000. Rejects, with a warning and false, a path that is empty, relative or a root, that is not below the
    /// configured work directory, or that is reachable only through a link. Returns true when the directory does not
    /// exist.
    [[nodiscard]] static bool RemoveJobWorkDirectory(const std::wstring& workDir);

    // Messages: a JSON object with one member, the name of the message

    /// Returns the JSON text of a message with this content.
    static std::wstring Serialize(const std::wstring& name, const EnqueueJobsInfo& info);
    /// The same for job records.
    static std::wstring Serialize(const std::wstring& key, const std::vector<JobListInfo>& records);
    /// The same for a list of texts.
    static std::wstring Serialize(const std::wstring& name, const std::vector<std::wstring>& texts);
    /// The same for a message whose content is null.
    static std::wstring Serialize(const std::wstring& name);

    /// Parses a message of any name into `value`. A missing member takes its default; a member of the wrong type
    /// rejects the whole text. Lists are appended to.
    [[nodiscard]] static bool Deserialize(const std::wstring& text, std::vector<JobListInfo>& value);
    /// The same for the answer to an enqueue request.
    [[nodiscard]] static bool Deserialize(const std::wstring& text, JobEnqueueResult& value);
    /// The same for reports of jobs.
    [[nodiscard]] static bool Deserialize(const std::wstring& text, std::vector<JobStatusInfo>& value);
    /// The same for scenarios.
    [[nodiscard]] static bool Deserialize(const std::wstring& text, std::vector<ScenarioInfo>& value);
    /// The same for parameter sets.
    [[nodiscard]] static bool Deserialize(const std::wstring& text, std::vector<ScenarioParameterSetInfo>& value);
    /// The same for a list of texts.
    [[nodiscard]] static bool Deserialize(const std::wstring& text, std::vector<std::wstring>& value);
    /// The same for one text.
    [[nodiscard]] static bool Deserialize(const std::wstring& text, std::wstring& value);
    /// Parses a process handle, which is written as hexadecimal text.
    [[nodiscard]] static bool Deserialize(const std::wstring& text, void*& value);

    // Job list and jobs file

    /// Reads the job list file. An unreadable file is kept beside it as ".corrupt-<time>"; if its ".bak" is valid, that
    /// is read instead, with a warning. If the job list file does not exist, the backup is not read, because the user
    /// has deleted the list. Returns false when there is no list, or none that can be read.
    [[nodiscard]] static bool ParseJobList(const std::wstring& path, std::vector<JobListInfo>& records);
    /// Appends the requests of a jobs file; relative paths in it are resolved against its directory. Returns false when
    /// the file cannot be read or contains an error.
    [[nodiscard]] static bool ReadEnqueueJobsFile(const std::wstring& path, std::vector<EnqueueJobsInfo>& infos);

    // Files that scenarios read and write

    /// Reads the last report of a scenario: its message and its progress in percent. Returns false when there is none;
    /// a file that is missing or partially written is not logged.
    [[nodiscard]] static bool ParseProgressFile(const std::wstring& path, std::wstring& message, int& progress);
    /// The same for the text of such a file; also sets `jobId`.
    [[nodiscard]] static bool ParseProgressFileString(const std::wstring& json, std::wstring& jobId,
                                                      std::wstring& message, int& progress);
    /// Reads the result of a scenario. `succeeded`: the scenario's own verdict; `pairs`: its messages with their codes;
    /// `texts`: its output files.
    [[nodiscard]] static bool ParseRunScenarioResult(const std::wstring& path, bool& succeeded,
                                                     std::vector<std::pair<int, std::wstring>>& pairs,
                                                     std::vector<std::wstring>& texts);
    /// The same for the text of such a file; also sets `jobId`.
    [[nodiscard]] static bool ParseRunScenarioResultString(const std::wstring& json, std::wstring& jobId,
                                                           bool& succeeded,
                                                           std::vector<std::pair<int, std::wstring>>& pairs,
                                                           std::vector<std::wstring>& texts);
    /// Builds the argument of the function "RunScenario"; paths are written as given.
    [[nodiscard]] static bool CreateRunScenarioInfoString(const std::wstring& jobId, const std::wstring& scenarioPath,
                                                          const std::vector<std::wstring>& inputFiles,
                                                          const std::wstring& outputFolder, const std::wstring& workDir,
                                                          const std::wstring& runArgument, std::wstring& json);

    // Scenarios

    /// Reads the manifest of a packaged scenario (".esa") and sets `displayName` and `inputs`. Returns false when the
    /// file is not a usable package.
    [[nodiscard]] static bool GetScenarioInfo(const std::wstring& path, ScenarioInfo& info);
    /// Appends the parameter sets of a scenario (".rb" or ".esa"). Returns true also for a scenario that offers none.
    [[nodiscard]] static bool GetScenarioParameterSetInfo(const std::wstring& scenarioPath,
                                                          std::vector<ScenarioParameterSetInfo>& out);

    // Strings

    /// Returns in `member` the JSON text of the member `name` of the object `json`, or the value itself if it is a
    /// string. Returns false when the member does not exist.
    [[nodiscard]] static bool GetStringResources(const std::wstring& json, const std::wstring& name,
                                                 std::wstring& member);
};
