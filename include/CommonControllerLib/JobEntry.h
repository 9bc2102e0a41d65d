#pragma once

#include "CommonControllerLib/Export.h"
#include "CommonControllerLib/JobRecords.h"

#include <cstdint>
#include <string>

/// One job of the engine: its persisted record and what is known of it only while the engine lives.
///
/// No lock of its own: the engine calls it under its lock. An application may derive from it and have its engine create
/// the derived class (`JobEntryManagerBase::CreateNewJobEntry`).
class CONTROLLER_API JobEntry {
public:
    JobEntry();
    explicit JobEntry(const JobListInfo& record);
    /// A copy refers to the same process handle, and each closes it when destroyed: share entries instead of copying
    /// them.
    JobEntry(const JobEntry&) = default;
    JobEntry& operator=(const JobEntry&) = default;
    /// Closes the process handle.
    virtual ~JobEntry();

    /// Takes the process handle out of the answer of "RunScenario". False, and nothing changed, when the answer has
    /// none.
    [[nodiscard]] virtual bool OnEvaluateJobInputResult(const std::wstring& response);
    /// One look at the job's process and files, without waiting; true when the job changed so that callers must be
    /// told.
    virtual bool OnCheckUpdate();
    /// Asks the job's process to stop by an empty file "killprocess" in its work directory, which is taken as it
    /// stands: an empty or relative one is seen from the current directory, and links on the way are followed. Always
    /// true; a file that cannot be made is not reported.
    virtual bool OnCancelJob();

    const JobListInfo& GetJobListInfo() const { return info; }
    const std::wstring& GetId() const { return info.id; }
    std::int32_t GetSeqId() const { return info.seqId; }
    JobStatus GetStatus() { return info.status; }
    /// The status's narrow name, "Unknown" for a value without one.
    std::string GetStatusString();
    const std::wstring& GetWorkDir() const { return info.workDir; }
    std::int32_t GetProgress() const { return info.progress; }
    /// The directory made by `PrepareOutputDir`; empty until then.
    const std::wstring& GetOutputFolder() const { return outputFolder; }
    /// Why the job failed, one sentence or more for people, where the scenario's own result does not say it; empty
    /// otherwise. Not persisted.
    const std::wstring& GetFailure() const { return failure; }
    void SetFailure(const std::wstring& reason) { failure = reason; }

    /// The process that runs the job; null when there is none. Owned by the entry.
    void* GetProcessHandle() const { return processHandle; }
    /// Takes ownership of a handle. One stored before is not closed.
    void SetProcessHandle(void* handle) { processHandle = handle; }
    void CloseProcessHandle();

    JobStatusInfo GetJobStatusInfo();

    /// Stores the progress. The message replaces an earlier one only; nothing in the library sets a first one.
    void UpdateProgress(int progress, const std::wstring& message);

    /// Store a time as UTC text.
    void SetStartTime(const std::int64_t& time);
    void SetEndTime(const std::int64_t& time);
    /// The start time read back as local time (`ConvertTimeStringToStruct`); -1 when the job was never started.
    std::int64_t GetStartTime();

    void SetScenarioDir(const std::wstring& dir, const std::wstring& subDir);

    /// Makes the prepared output directory the record's output directory, if it exists.
    void SetOutputFolder();

    /// Builds the run request of this job; false when it cannot be built.
    [[nodiscard]] bool CreateJsonString(std::wstring& json);

    /// Any transition is accepted and logged; the status that the job already has is neither.
    void ChangeStatus(JobStatus status);

    /// Makes a fresh directory for the job's results below the output directory, named after the first input file (with
    /// a number behind it when that name is taken). Without input files the output directory itself is taken, made or
    /// not. False when the directory cannot be made (logged).
    [[nodiscard]] bool PrepareOutputDir();

    /// UTC text of a time: "2024-03-05T07:08:09Z".
    static std::wstring CreateTimeString(const std::int64_t& time);
    /// Reads such a text as local time, deliberately: ages computed from it are off by the offset from UTC. -1 for what
    /// is no time.
    static std::int64_t ConvertTimeStringToStruct(const std::wstring& text);

protected:
    JobListInfo info;
    std::wstring outputFolder;
    std::wstring scenarioDir;
    std::wstring scenarioSubDir;
    std::wstring progressMessage;
    void* processHandle = nullptr;
    std::wstring failure;

private:
    /// Takes a new value out of the progress file; false when there is none yet.
    [[nodiscard]] bool ReadProgress();
    /// The job's process has ended: lets go of it and gives the job its end time and last status.
    void Finish();
    /// True when the result says success; else the failure says why. `ending`: how the process ended.
    [[nodiscard]] bool TakeResult(const std::wstring& ending);
};
