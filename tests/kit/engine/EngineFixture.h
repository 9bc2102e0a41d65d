#pragma once

#include "CommonControllerLib/FunctionManager.h"
#include "CommonControllerLib/JobEntryManagerBase.h"
#include "kit/TemporaryDirectory.h"
#include "kit/doubles/RecordingCompanion.h"
#include "kit/doubles/ScriptedProcess.h"
#include "kit/modules/ModuleFiles.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

using Lines = std::vector<std::wstring>;
using InputSets = std::vector<std::vector<std::wstring>>;

/// Exposes private and protected members of the engine.
class OpenEngine : public JobEntryManagerBase {
public:
    using JobEntryManagerBase::JobEntryManagerBase;
    using JobEntryManagerBase::jobList;
    using JobEntryManagerBase::knownJobIds;
    using JobEntryManagerBase::mutex;
    using JobEntryManagerBase::nextJob;
    using JobEntryManagerBase::nextSeqId;
    using JobEntryManagerBase::scenarioDirectories;
    using JobEntryManagerBase::scenarioMap;
};

/// An engine with a scripted module, a recording companion, and a scenario and inputs on disk.
///
/// The module answers each "RunScenario" with a process of the fixture, unless a test changes this.
class EngineFixture : public testing::Test {
protected:
    EngineFixture();

    /// Creates the engine with these jobs in its job list file.
    void Start(const std::vector<JobListInfo>& savedJobs = {});
    /// A job as stored in the job list file.
    static JobListInfo SavedJob(std::int32_t seqId, JobStatus status);
    /// A start time that the engine reads as `hours` ago.
    static std::wstring StartedHoursAgo(int hours);

    /// Writes a file below the fixture's directory, and returns its path.
    std::wstring Write(const std::wstring& name, const std::string& content) const;
    /// Writes an input file, and returns its path.
    std::wstring Input(const std::wstring& name) const { return Write(name, "solid"); }
    EnqueueJobsInfo Request(const InputSets& inputSets) const;
    JobEnqueueResult Enqueue(const InputSets& inputSets);
    /// Enqueues jobs with one input each.
    void EnqueueJobs(int count);
    /// Calls `ExecuteJob` once, and returns its reports.
    std::vector<JobStatusInfo> Execute();
    void FinishProcess(std::int32_t seqId) { processes.at(Job(seqId).GetId()).Finish(); }
    void ReportProgress(std::int32_t seqId, int progress);
    void ReportResult(std::int32_t seqId, bool succeeded);
    /// Calls `CheckUpdate` once, and returns its reports.
    std::vector<JobStatusInfo> Poll();

    JobEntry& Job(std::int32_t seqId);
    JobStatus StatusOf(std::int32_t seqId) { return Job(seqId).GetStatus(); }
    /// The number of the job at the cursor; 0 at the end.
    std::int32_t NumberAtCursor();
    /// True if another thread could take the engine's lock now.
    bool IsEngineFree();
    std::size_t JobListWriteCount() const { return companion.JobListWrites().size(); }

    RecordingCompanion companion;
    TemporaryDirectory directory;
    std::wstring scenarioFile = Write(L"mesh.rb", "puts 1");
    test_modules::Script script;
    test_modules::ScriptedModule module{test_modules::ModulePath(L"recording_module_a"), script};
    FunctionManager functions{{test_modules::ModulePath(L"recording_module_a")}};
    std::map<std::wstring, ScriptedProcess> processes;
    std::unique_ptr<OpenEngine> engine;

private:
    long AnswerWithProcess(const test_modules::Call& call, std::wstring& output);
};
