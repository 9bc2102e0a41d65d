#include "CommonControllerLib/JobEntryManagerBase.h"

#include "kit/MemberPlaces.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <list>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <vector>

// The published interface requires the order of data members and virtual operations: each class is compared with one
// declared here with the same members.
namespace {

using test_support::OffsetOf;
using test_support::SlotOf;

namespace declared {

using Text = std::wstring;
using Texts = std::vector<std::wstring>;

struct ScenarioDirectory {
    Text path;
    Text label;
};

struct InputFileSpec {
    Text cadName;
    Texts extensions;
};

struct ScenarioInfo {
    Text id;
    Text relativePath;
    Text path;
    Text displayName;
    std::vector<InputFileSpec> inputs;
};

struct JobListInfo {
    Text id;
    std::int32_t seqId;
    std::int32_t progress;
    std::int32_t status;
    Text outputDir;
    Text workDir;
    Text startTime;
    Text endTime;
    ScenarioInfo scenario;
    Texts inputFiles;
    Text runArgument;
    Text extraText;
};

struct EnqueueJobsInfo {
    Text requestId;
    std::vector<Texts> inputFileSets;
    ScenarioInfo scenario;
    Text outputDir;
    Text runArgument;
    Text extraText;
    bool useTimeStampFolder;
};

struct JobIdInfo {
    Text id;
    std::int32_t seqId;
};

struct JobEnqueueResult {
    std::vector<JobIdInfo> jobIds;
    Text requestId;
    std::vector<Texts> inputSetResults;
};

struct JobStatusInfo {
    Text id;
    std::int32_t progress;
    std::int32_t status;
    Text outputDir;
    Text workDir;
    Text startTime;
    Text endTime;
};

class JobEntry {
public:
    virtual ~JobEntry() = default;
    virtual bool OnEvaluateJobInputResult(const Text&) { return false; }
    virtual bool OnCheckUpdate() { return false; }
    virtual bool OnCancelJob() { return false; }

    JobListInfo info{};
    Text outputFolder;
    Text scenarioDir;
    Text scenarioSubDir;
    Text progressMessage;
    void* processHandle = nullptr;
};

class JobEntryManagerBase {
public:
    virtual ~JobEntryManagerBase() = default;
    virtual JobEntry* CreateNewJobEntry(const JobListInfo*) { return nullptr; }
    virtual bool IsSuspendJobExecution() { return false; }

    std::map<Text, ScenarioInfo> scenarioMap;
    const void* functionManager = nullptr;
    std::vector<ScenarioDirectory> scenarioDirectories;
    Text workDirectory;
    std::list<std::shared_ptr<JobEntry>> jobList;
    std::list<std::shared_ptr<JobEntry>>::iterator nextJob;
    std::set<Text> knownJobIds;
    std::mutex mutex;
    std::int32_t nextSeqId = 0;
};

} // namespace declared

#define EXPECT_SAME_OFFSET(Record, member) EXPECT_EQ(OffsetOf(&Record::member), OffsetOf(&declared::Record::member))

TEST(EngineLayoutTest, ScenarioRecordsHaveTheirMembersInTheDeclaredOrder) {
    EXPECT_SAME_OFFSET(ScenarioDirectory, path);
    EXPECT_SAME_OFFSET(ScenarioDirectory, label);
    EXPECT_EQ(sizeof(ScenarioDirectory), sizeof(declared::ScenarioDirectory));
    EXPECT_SAME_OFFSET(InputFileSpec, cadName);
    EXPECT_SAME_OFFSET(InputFileSpec, extensions);
    EXPECT_EQ(sizeof(InputFileSpec), sizeof(declared::InputFileSpec));
    EXPECT_SAME_OFFSET(ScenarioInfo, id);
    EXPECT_SAME_OFFSET(ScenarioInfo, relativePath);
    EXPECT_SAME_OFFSET(ScenarioInfo, path);
    EXPECT_SAME_OFFSET(ScenarioInfo, displayName);
    EXPECT_SAME_OFFSET(ScenarioInfo, inputs);
    EXPECT_EQ(sizeof(ScenarioInfo), sizeof(declared::ScenarioInfo));
}

TEST(EngineLayoutTest, TheJobsRowHasItsMembersInTheDeclaredOrder) {
    EXPECT_SAME_OFFSET(JobListInfo, id);
    EXPECT_SAME_OFFSET(JobListInfo, seqId);
    EXPECT_SAME_OFFSET(JobListInfo, progress);
    EXPECT_SAME_OFFSET(JobListInfo, status);
    EXPECT_SAME_OFFSET(JobListInfo, outputDir);
    EXPECT_SAME_OFFSET(JobListInfo, workDir);
    EXPECT_SAME_OFFSET(JobListInfo, startTime);
    EXPECT_SAME_OFFSET(JobListInfo, endTime);
    EXPECT_SAME_OFFSET(JobListInfo, scenario);
    EXPECT_SAME_OFFSET(JobListInfo, inputFiles);
    EXPECT_SAME_OFFSET(JobListInfo, runArgument);
    EXPECT_SAME_OFFSET(JobListInfo, extraText);
    EXPECT_EQ(sizeof(JobListInfo), sizeof(declared::JobListInfo));
}

TEST(EngineLayoutTest, TheEnqueueRequestHasItsMembersInTheDeclaredOrder) {
    EXPECT_SAME_OFFSET(EnqueueJobsInfo, requestId);
    EXPECT_SAME_OFFSET(EnqueueJobsInfo, inputFileSets);
    EXPECT_SAME_OFFSET(EnqueueJobsInfo, scenario);
    EXPECT_SAME_OFFSET(EnqueueJobsInfo, outputDir);
    EXPECT_SAME_OFFSET(EnqueueJobsInfo, runArgument);
    EXPECT_SAME_OFFSET(EnqueueJobsInfo, extraText);
    EXPECT_SAME_OFFSET(EnqueueJobsInfo, useTimeStampFolder);
    EXPECT_EQ(sizeof(EnqueueJobsInfo), sizeof(declared::EnqueueJobsInfo));
}

TEST(EngineLayoutTest, TheAnswersHaveTheirMembersInTheDeclaredOrder) {
    EXPECT_SAME_OFFSET(JobIdInfo, id);
    EXPECT_SAME_OFFSET(JobIdInfo, seqId);
    EXPECT_EQ(sizeof(JobIdInfo), sizeof(declared::JobIdInfo));
    EXPECT_SAME_OFFSET(JobEnqueueResult, jobIds);
    EXPECT_SAME_OFFSET(JobEnqueueResult, requestId);
    EXPECT_SAME_OFFSET(JobEnqueueResult, inputSetResults);
    EXPECT_EQ(sizeof(JobEnqueueResult), sizeof(declared::JobEnqueueResult));
    EXPECT_SAME_OFFSET(JobStatusInfo, id);
    EXPECT_SAME_OFFSET(JobStatusInfo, progress);
    EXPECT_SAME_OFFSET(JobStatusInfo, status);
    EXPECT_SAME_OFFSET(JobStatusInfo, outputDir);
    EXPECT_SAME_OFFSET(JobStatusInfo, workDir);
    EXPECT_SAME_OFFSET(JobStatusInfo, startTime);
    EXPECT_SAME_OFFSET(JobStatusInfo, endTime);
    EXPECT_EQ(sizeof(JobStatusInfo), sizeof(declared::JobStatusInfo));
}

/// Exposes what derived classes see.
class Job : public JobEntry {
public:
    using JobEntry::info;
    using JobEntry::outputFolder;
    using JobEntry::processHandle;
    using JobEntry::progressMessage;
    using JobEntry::scenarioDir;
    using JobEntry::scenarioSubDir;
};

TEST(EngineLayoutTest, AJobHasItsMembersAndSlotsInTheDeclaredOrder) {
    using Declared = declared::JobEntry;
    EXPECT_EQ(OffsetOf(&Job::info), OffsetOf(&Declared::info));
    EXPECT_EQ(OffsetOf(&Job::outputFolder), OffsetOf(&Declared::outputFolder));
    EXPECT_EQ(OffsetOf(&Job::scenarioDir), OffsetOf(&Declared::scenarioDir));
    EXPECT_EQ(OffsetOf(&Job::scenarioSubDir), OffsetOf(&Declared::scenarioSubDir));
    EXPECT_EQ(OffsetOf(&Job::progressMessage), OffsetOf(&Declared::progressMessage));
    EXPECT_EQ(OffsetOf(&Job::processHandle), OffsetOf(&Declared::processHandle));
    // They are followed by one member of the implementation, the reason of a failure.
    EXPECT_EQ(sizeof(JobEntry), sizeof(Declared) + sizeof(std::wstring));
    EXPECT_EQ(SlotOf(&JobEntry::OnEvaluateJobInputResult), SlotOf(&Declared::OnEvaluateJobInputResult));
    EXPECT_EQ(SlotOf(&JobEntry::OnCheckUpdate), SlotOf(&Declared::OnCheckUpdate));
    EXPECT_EQ(SlotOf(&JobEntry::OnCancelJob), SlotOf(&Declared::OnCancelJob));
    EXPECT_EQ(SlotOf(&JobEntry::GetJobStatusInfo), -1);
}

/// Exposes what derived classes see.
class Engine : public JobEntryManagerBase {
public:
    using JobEntryManagerBase::CreateNewJobEntry;
    using JobEntryManagerBase::functionManager;
    using JobEntryManagerBase::IsSuspendJobExecution;
    using JobEntryManagerBase::jobList;
    using JobEntryManagerBase::knownJobIds;
    using JobEntryManagerBase::mutex;
    using JobEntryManagerBase::nextJob;
    using JobEntryManagerBase::nextSeqId;
    using JobEntryManagerBase::scenarioDirectories;
    using JobEntryManagerBase::scenarioMap;
    using JobEntryManagerBase::workDirectory;
};

TEST(EngineLayoutTest, TheEngineHasItsMembersAndSlotsInTheDeclaredOrder) {
    using Declared = declared::JobEntryManagerBase;
    EXPECT_EQ(OffsetOf(&Engine::scenarioMap), OffsetOf(&Declared::scenarioMap));
    EXPECT_EQ(OffsetOf(&Engine::functionManager), OffsetOf(&Declared::functionManager));
    EXPECT_EQ(OffsetOf(&Engine::scenarioDirectories), OffsetOf(&Declared::scenarioDirectories));
    EXPECT_EQ(OffsetOf(&Engine::workDirectory), OffsetOf(&Declared::workDirectory));
    EXPECT_EQ(OffsetOf(&Engine::jobList), OffsetOf(&Declared::jobList));
    EXPECT_EQ(OffsetOf(&Engine::nextJob), OffsetOf(&Declared::nextJob));
    EXPECT_EQ(OffsetOf(&Engine::knownJobIds), OffsetOf(&Declared::knownJobIds));
    EXPECT_EQ(OffsetOf(&Engine::mutex), OffsetOf(&Declared::mutex));
    EXPECT_EQ(OffsetOf(&Engine::nextSeqId), OffsetOf(&Declared::nextSeqId));
    EXPECT_EQ(sizeof(JobEntryManagerBase), sizeof(Declared));
    EXPECT_EQ(SlotOf(&Engine::CreateNewJobEntry), SlotOf(&Declared::CreateNewJobEntry));
    EXPECT_EQ(SlotOf(&Engine::IsSuspendJobExecution), SlotOf(&Declared::IsSuspendJobExecution));
    EXPECT_EQ(SlotOf(&JobEntryManagerBase::CancelAllJobs), -1);
}

} // namespace
