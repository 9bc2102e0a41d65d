#pragma once

#include "CommonControllerLib/FunctionManager.h"
#include "CommonControllerLib/JobEntryManagerBase.h"
#include "doubles/RecordingCompanion.h"
#include "doubles/ScriptedProcess.h"
#include "modules/ModuleFiles.h"
#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

using Lines = std::vector<std::wstring>;
using InputSets = std::vector<std::vector<std::wstring>>;

/// Shows what the engine keeps for itself and for those derived from it.
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

/// An engine with a scripted module, a recording companion, and a scenario and inputs on the disk.
///
/// The module answers every "RunScenario" with a process of the fixture, unless a test says otherwise.
class EngineFixture : public testing::Test {
protected:
    EngineFixture();

    /// Makes the engine, with these jobs in its job list file.
    void Start(const std::vector<JobListInfo>& savedJobs = {});
    /// As the job list file holds it.
    static JobListInfo SavedJob(std::int32_t seqId, JobStatus status);
    /// The start time that the engine reads as `hours` ago.
    static std::wstring StartedHoursAgo(int hours);

    /// Writes a file below the fixture's directory, and gives its path.
    std::wstring Write(const std::wstring& name, const std::string& content) const;
    /// Writes an input file, and gives its path.
    std::wstring Input(const std::wstring& name) const { return Write(name, "solid"); }
    EnqueueJobsInfo Request(const InputSets& inputSets) const;
    JobEnqueueResult Enqueue(const InputSets& inputSets);
    /// Enqueues jobs of one input each.
    void EnqueueJobs(int count);
    /// One call of `ExecuteJob`: what it reported.
    std::vector<JobStatusInfo> Execute();
    void FinishProcess(std::int32_t seqId) { processes.at(Job(seqId).GetId()).Finish(); }
    void ReportProgress(std::int32_t seqId, int progress);
    void ReportResult(std::int32_t seqId, bool succeeded);
    /// One call of `CheckUpdate`: what it reported.
    std::vector<JobStatusInfo> Poll();

    JobEntry& Job(std::int32_t seqId);
    JobStatus StatusOf(std::int32_t seqId) { return Job(seqId).GetStatus(); }
    /// The number of the job at the cursor; 0 when it is at the end.
    std::int32_t NumberAtCursor();
    /// True when another thread could take the engine's lock at this moment.
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
