#pragma once

/// @file
/// One job of the engine, for programs that derive from it.

#include "CommonControllerLib/Export.h"
#include "CommonControllerLib/JobRecords.h"

#include <cstdint>
#include <string>

/// One job of the engine: its persisted record and the state that exists only while the engine runs.
///
/// Threads: no locking; the engine calls it under its own lock. An application may derive from it and have its engine
/// create the derived class (`JobEntryManagerBase::CreateNewJobEntry`).
class CONTROLLER_API JobEntry {
public:
    JobEntry();
    /// Copies the record; the entry has no process handle.
    explicit JobEntry(const JobListInfo& record);
    /// A copy refers to the same process handle, and each destructor closes it. Share entries instead of copying them.
    JobEntry(const JobEntry&) = default;
    /// As the copy constructor; a process handle that this entry had is not closed.
    JobEntry& operator=(const JobEntry&) = default;
    /// Closes the process handle.
    virtual ~JobEntry();

    /// Takes ownership of the process handle in the answer of "RunScenario". Returns false, and changes nothing, when
    /// the answer contains none.
    [[nodiscard]] virtual bool OnEvaluateJobInputResult(const std::wstring& response);
    /// Checks the job's process and files once, without waiting. Returns true when the job changed and the change must
    /// be reported.
    virtual bool OnCheckUpdate();
    /// Asks the job's process to stop by creating an empty file "killprocess" in its work directory. The path is used
    /// unchanged: an empty or relative one is resolved against the current directory, and links are followed. Returns
    /// true always; a failure to create the file is not reported.
    virtual bool OnCancelJob();

    /// The persisted record.
    const JobListInfo& GetJobListInfo() const { return info; }
    /// The id: unique, lower-case hexadecimal.
    const std::wstring& GetId() const { return info.id; }
    /// The number that users see.
    std::int32_t GetSeqId() const { return info.seqId; }
    /// The status of the record.
    JobStatus GetStatus() { return info.status; }
    /// The narrow name of the status, "Unknown" for a value without a name.
    std::string GetStatusString();
    /// The work directory, where the job's process writes its reports.
    const std::wstring& GetWorkDir() const { return info.workDir; }
    /// Percent, 0 to 100, as last reported.
    std::int32_t GetProgress() const { return info.progress; }
    /// The directory created by `PrepareOutputDir`; empty before that call.
    const std::wstring& GetOutputFolder() const { return outputFolder; }
    /// The reason why the job failed, in sentences for people, if the scenario's own result does not give one;
    /// otherwise empty. Not persisted.
    const std::wstring& GetFailure() const { return failure; }
    /// Stores the reason that `GetFailure` returns.
    void SetFailure(const std::wstring& reason) { failure = reason; }

    /// The process that runs the job; null without a process. Owned by the entry.
    void* GetProcessHandle() const { return processHandle; }
    /// Takes ownership of `handle`. Does not close a handle stored before.
    void SetProcessHandle(void* handle) { processHandle = handle; }
    /// Closes the handle and sets it to null.
    void CloseProcessHandle();

    /// The part of the record that is reported to front ends.
    JobStatusInfo GetJobStatusInfo();

    /// Stores the progress, in percent. `message` only replaces an earlier message, and nothing in the library stores a
    /// first one: required by the published interface, held by JobEntryUpdateTest.FirstProgressMessageIsNotStored.
    void UpdateProgress(int progress, const std::wstring& message);

    /// Stores the start time as UTC text. Units: seconds since the epoch.
    void SetStartTime(const std::int64_t& time);
    /// Stores the end time as UTC text. Units: seconds since the epoch.
    void SetEndTime(const std::int64_t& time);
    /// Parses the start time as local time (see `ConvertTimeStringToStruct`). Returns -1 if the job was never started.
    std::int64_t GetStartTime();

    /// Stores the scenario's directory and the subdirectory in it.
    void SetScenarioDir(const std::wstring& dir, const std::wstring& subDir);

    /// Sets the record's output directory to the directory created by `PrepareOutputDir`, if that exists.
    void SetOutputFolder();

    /// Builds the run request of this job. Returns false when it cannot be built.
    [[nodiscard]] bool CreateJsonString(std::wstring& json);

    /// Sets and logs the status; every transition is accepted. Does nothing when the status is unchanged.
    void ChangeStatus(JobStatus status);

    /// Creates a new directory for the job's results below the output directory, named after the first input file, with
    /// a number appended if that name is in use. Without input files the output directory itself is used and not
    /// created. On failure to create the directory, logs an error and returns false.
    [[nodiscard]] bool PrepareOutputDir();

    /// Formats a time as UTC text, for example "2024-03-05T07:08:09Z". Units: seconds since the epoch.
    static std::wstring CreateTimeString(const std::int64_t& time);
    /// Parses such a text as local time, so ages computed from it are off by the offset from UTC: required by the
    /// published interface, held by JobEntryTimesTest.TimesAreWrittenInUtcAndReadAsLocal. Returns -1 for a text that is
    /// not a time.
    static std::int64_t ConvertTimeStringToStruct(const std::wstring& text);

protected:
    /// The persisted record.
    JobListInfo info;
    /// The directory for results; empty before `PrepareOutputDir`.
    std::wstring outputFolder;
    /// The directory of the scenario.
    std::wstring scenarioDir;
    /// The subdirectory of the scenario in it.
    std::wstring scenarioSubDir;
    /// The message of `UpdateProgress`.
    std::wstring progressMessage;
    /// Owned; null without a process.
    void* processHandle = nullptr;
    /// The reason that `GetFailure` returns.
    std::wstring failure;

private:
    /// Reads a new value from the progress file. Returns false when there is none yet.
    [[nodiscard]] bool ReadProgress();
    /// Handles the end of the job's process: closes the handle and sets the end time and the final status.
    void Finish();
    /// Reads the result. Returns true when it says success; otherwise sets `failure` to the reason. `ending` describes
    /// how the process ended.
    [[nodiscard]] bool TakeResult(const std::wstring& ending);
};
