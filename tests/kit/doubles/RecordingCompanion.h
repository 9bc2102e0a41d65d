#pragma once

#include "CommonControllerLib/JobRecords.h"
#include "CommonControllerLib/ScenarioRecords.h"
#include "kit/doubles/ScriptedMessages.h"

#include <cstddef>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// Replaces ControllerCSWrapper: answers from a script, and records its calls in order.
///
/// The static functions of ControllerCSWrapper use the latest object; one must exist while they are called. Set the
/// script
/// before calls from several threads, and read the recording after them.
class RecordingCompanion {
public:
    RecordingCompanion();
    ~RecordingCompanion();
    RecordingCompanion(const RecordingCompanion&) = delete;
    RecordingCompanion& operator=(const RecordingCompanion&) = delete;

    static RecordingCompanion& Current();

    struct Progress {
        std::wstring jobId;
        std::wstring message;
        int progress = 0;
    };
    struct Result {
        std::wstring jobId;
        bool succeeded = false;
        std::vector<std::pair<int, std::wstring>> messages = {{0, L"a message"}};
    };
    struct RunRequest {
        std::wstring jobId;
        std::wstring scenarioPath;
        std::vector<std::wstring> inputFiles;
        std::wstring outputFolder;
        std::wstring workDir;
        std::wstring runArgument;

        bool operator==(const RunRequest&) const = default;
    };

    // The script. Calls that are not scripted return false or an empty value.
    std::wstring workDirectory = L"C:\\work";
    std::wstring jobListFile = L"C:\\data\\job_list.json";
    std::optional<int> autoDeleteDays;
    std::vector<ScenarioDirectory> scenarioDirectories;
    std::wstring culture;
    std::wstring defaultCulture;
    std::optional<std::vector<JobListInfo>> savedJobs;
    std::map<std::wstring, Progress> progressFiles;
    std::map<std::wstring, Progress> progressTexts;
    std::map<std::wstring, Result> resultFiles;
    std::map<std::wstring, Result> resultTexts;
    std::map<std::wstring, void*> processHandles;
    std::map<std::wstring, ScenarioInfo> packages;
    std::map<std::wstring, std::vector<ScenarioParameterSetInfo>> parameterSets;
    ScriptedMessages messages;
    bool canBuildRunRequests = true;
    bool canRemoveWorkDirectories = true;
    bool canWriteFiles = true;
    /// Called while a report is parsed, and while a file is written.
    std::function<void()> onParse;
    std::function<void()> onWrite;

    // The recording

    /// In order: log lines ("debug: ", "info: ", "warn: ", "error: " and the text), changes of the log file ("log file:
    /// " and the path), file writes ("write: " and the path), removals ("remove: " and the directory) and reads of
    /// string resources ("string resource: " and the member).
    std::vector<std::wstring> Events() const;
    /// The events that begin with `prefix`, with the prefix removed.
    std::vector<std::wstring> Events(std::wstring_view prefix) const;
    void Forget();

    /// The records of each write of the job list file.
    std::vector<std::vector<JobListInfo>> JobListWrites() const;
    std::vector<RunRequest> RunRequests() const;
    /// The arguments of each read of a progress or result file, in order.
    std::vector<std::wstring> FilesRead() const;

    // The functions of ControllerCSWrapper
    void AddEvent(std::wstring_view prefix, const std::wstring& text);
    std::wstring AddJobList(const std::wstring& key, const std::vector<JobListInfo>& records);
    [[nodiscard]] bool AddWrite(const std::wstring& json, const std::wstring& path);
    std::wstring AddRunRequest(RunRequest request);
    void AddFileRead(const std::wstring& path);

private:
    mutable std::mutex mutex;
    std::vector<std::wstring> events;
    std::vector<std::vector<JobListInfo>> jobLists;
    std::vector<std::vector<JobListInfo>> jobListWrites;
    std::vector<RunRequest> runRequests;
    std::vector<std::wstring> filesRead;
};
