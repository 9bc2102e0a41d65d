#include "CommonControllerLib/FunctionManager.h"
#include "CommonControllerLib/JobEntryManagerBase.h"
#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "kit/Deadline.h"
#include "kit/TemporaryDirectory.h"
#include "kit/doubles/ScriptedEngine.h"
#include "kit/modules/ModuleFiles.h"
#include "services/Settings.h"
#include "system/stress/EngineReports.h"
#include "system/stress/OperationCounts.h"
#include "system/stress/Rounds.h"
#include "system/stress/ScenarioProcesses.h"
#include "system/stress/ThreadTeam.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <memory>
#include <random>
#include <set>
#include <shared_mutex>
#include <string>
#include <vector>

namespace {

using Ids = std::vector<std::wstring>;
using Statuses = std::vector<JobStatusInfo>;

/// Reads its whole list while other threads change it. `GetJobList` takes no lock, so this class does.
class WatchedEngine final : public ScriptedEngine<JobEntryManagerBase> {
public:
    using ScriptedEngine::ScriptedEngine;

    std::vector<JobListInfo> LockedJobList() {
        const std::lock_guard lock(mutex);
        std::vector<JobListInfo> list;
        GetJobList(list);
        return list;
    }
};

constexpr int requestsEach = 24;
constexpr std::size_t inputSets = 3;
/// The maximum number of waiting jobs, so that all operations overlap until the end.
constexpr std::ptrdiff_t longestBacklog = 12;

/// One engine and all its callers, for one round.
class EngineRound {
public:
    EngineRound(std::uint32_t roundSeed, OperationCounts& operationCounts);
    ~EngineRound() { settings::UseFile(L""); }
    EngineRound(const EngineRound&) = delete;
    EngineRound& operator=(const EngineRound&) = delete;

    /// Runs all threads until every job has ended.
    void Run();
    void CheckEnd();

private:
    void Enqueue(int thread);
    void Cancel(bool waits);
    void CancelAll();
    void Delete();
    void Query();
    void Execute();
    void Poll();
    void Watch();
    void FetchScenarios();

    /// At most `count` of the latest jobs, without duplicates.
    Ids SomeIds(std::size_t count);
    std::uint32_t Draw();

    TemporaryDirectory directory;
    OperationCounts& counts;
    EngineReports reports;
    ListWatch watch;
    ScenarioProcesses processes;
    test_modules::Script script;
    test_modules::ScriptedModule module{test_modules::ModulePath(L"recording_module_a"), script};
    std::unique_ptr<FunctionManager> functions;
    std::unique_ptr<WatchedEngine> engine;
    std::mutex randomMutex;
    std::mt19937 random;
    /// Held exclusively by operations that must not run while others enqueue or delete.
    std::shared_mutex listShape;
    /// The number of jobs in the queue at the last check.
    std::atomic<std::ptrdiff_t> backlog = 0;
};

EngineRound::EngineRound(std::uint32_t roundSeed, OperationCounts& operationCounts)
    : counts(operationCounts), processes(reports, roundSeed), random(roundSeed) {
    WriteTextFile(directory / L"settings.json", R"({"version":1,"workDirectory":"work","jobListFile":"job_list.json",)"
                                                R"("logFile":"","scenarioDirectories":[{"path":"scenarios"}]})");
    WriteTextFile(directory / L"scenarios\\mesh.rb", "puts 1");
    WriteTextFile(directory / L"part.stl", "solid");
    settings::UseFile(directory / L"settings.json");
    script.keepsCalls = false;
    script.answer = [this](const test_modules::Call& call, std::wstring& output) {
        return processes.Answer(call, output);
    };
    functions = std::make_unique<FunctionManager>(Ids{test_modules::ModulePath(L"recording_module_a")});
    engine = std::make_unique<WatchedEngine>(functions.get());
}

void EngineRound::Run() {
    ThreadTeam running;
    running.Add([this] { processes.Live(*engine); });
    ThreadTeam driving;
    driving.AddEndless([this] { Execute(); });
    driving.AddEndless([this] { Poll(); });
    driving.AddEndless([this] { Poll(); });
    driving.AddEndless([this] { Watch(); });
    ThreadTeam asking;
    asking.AddEndless([this] { Cancel(true); });
    asking.AddEndless([this] { Cancel(true); });
    asking.AddEndless([this] { Cancel(false); });
    asking.AddEndless([this] { CancelAll(); });
    asking.AddEndless([this] { Delete(); });
    asking.AddEndless([this] { Delete(); });
    asking.AddEndless([this] { Query(); });
    asking.AddEndless([this] { FetchScenarios(); });
    ThreadTeam enqueueing;
    enqueueing.Add([this] { Enqueue(1); });
    enqueueing.Add([this] { Enqueue(2); });
    enqueueing.Join();
    asking.Join();
    while (!engine->IsCompleted()) {
        std::this_thread::yield();
    }
    driving.Join();
    processes.End();
}

void EngineRound::CheckEnd() {
    const std::vector<JobListInfo> list = engine->LockedJobList();
    for (const std::string& problem : reports.Problems(list)) {
        ADD_FAILURE() << problem;
    }
    std::vector<JobListInfo> saved;
    EXPECT_TRUE(ControllerCSWrapper::ParseJobList(ControllerCSWrapper::GetJobListFile(), saved));
    EXPECT_TRUE(saved == list) << "The job list file holds something else than the engine.";
}

void EngineRound::Enqueue(int thread) {
    for (int number = 0; number < requestsEach; ++number) {
        while (backlog > longestBacklog) {
            std::this_thread::yield();
        }
        const std::shared_lock notAlone(listShape);
        EnqueueJobsInfo request;
        request.requestId = std::to_wstring(thread) + L"-" + std::to_wstring(number);
        request.scenario.id = directory / L"scenarios\\mesh.rb";
        request.outputDir = directory / L"out" + request.requestId;
        request.inputFileSets.assign(inputSets, {directory / L"part.stl"});
        JobEnqueueResult result;
        EXPECT_TRUE(engine->EnqueueJob(request, result));
        EXPECT_EQ(result.requestId, request.requestId);
        reports.Enqueued(result);
        counts.Add("EnqueueJob");
    }
}

void EngineRound::Cancel(bool waits) {
    Ids ids = SomeIds(2);
    Statuses cancelled;
    EXPECT_TRUE(engine->CancelJobs(ids, cancelled, waits));
    reports.Cancelled(cancelled);
    Statuses now;
    engine->CheckJobStatus(ids, now);
    for (const JobStatusInfo& job : cancelled) {
        const bool isStillCanceling = std::any_of(now.begin(), now.end(), [&job](const JobStatusInfo& info) {
            return info.id == job.id && info.status == JobStatus::Canceling;
        });
        EXPECT_FALSE(waits && isStillCanceling) << "The wait ended before the job did.";
    }
    counts.Add(waits ? "CancelJobs with waiting" : "CancelJobs");
}

void EngineRound::CancelAll() {
    counts.Add("IsCompleted");
    if (engine->IsCompleted() || Draw() % 16 != 0) {
        return;
    }
    const std::unique_lock alone(listShape);
    Statuses cancelled;
    EXPECT_TRUE(engine->CancelAllJobs(cancelled, Draw() % 2 == 0));
    reports.Cancelled(cancelled);
    counts.Add("CancelAllJobs");
}

void EngineRound::Delete() {
    const std::shared_lock notAlone(listShape);
    Ids ids = SomeIds(4);
    Ids deleted;
    EXPECT_TRUE(engine->DeleteJobs(ids, deleted));
    reports.Deleted(deleted);
    counts.Add("DeleteJobs");
}

void EngineRound::Query() {
    const Ids ids = SomeIds(3);
    Statuses statuses;
    EXPECT_TRUE(engine->CheckJobStatus(ids, statuses));
    EXPECT_EQ(statuses.size(), ids.size());
    counts.Add("CheckJobStatus");
    engine->Terminate();
    counts.Add("Terminate");
}

void EngineRound::Execute() {
    Statuses updated;
    engine->ExecuteJob(nullptr, updated);
    reports.Executed(updated);
    counts.Add("ExecuteJob");
}

void EngineRound::Poll() {
    Statuses changed;
    const bool hasChanged = engine->CheckUpdate(changed);
    EXPECT_EQ(hasChanged, !changed.empty());
    reports.Ended(changed);
    counts.Add("CheckUpdate");
}

void EngineRound::Watch() {
    const std::vector<JobListInfo> list = engine->LockedJobList();
    EXPECT_EQ(watch.Look(list), "");
    backlog =
        std::count_if(list.begin(), list.end(), [](const JobListInfo& job) { return job.status == JobStatus::Queued; });
    counts.Add("GetJobList");
}

void EngineRound::FetchScenarios() {
    const std::unique_lock alone(listShape);
    std::vector<ScenarioInfo> scenarios;
    engine->FetchScenarios(scenarios);
    ASSERT_EQ(scenarios.size(), 1U);
    std::vector<ScenarioParameterSetInfo> sets;
    EXPECT_TRUE(engine->FetchScenarioParameterSets(sets, scenarios.front().id));
    counts.Add("FetchScenarios");
}

Ids EngineRound::SomeIds(std::size_t count) {
    const Ids latest = reports.LatestIds(40);
    std::set<std::wstring> chosen;
    for (std::size_t draw = 0; !latest.empty() && draw < count; ++draw) {
        chosen.insert(latest[Draw() % latest.size()]);
    }
    return {chosen.begin(), chosen.end()};
}

std::uint32_t EngineRound::Draw() {
    const std::lock_guard lock(randomMutex);
    return std::uniform_int_distribution<std::uint32_t>()(random);
}

} // namespace

TEST(EngineStressTest, NoJobIsLostAndNoneHasTwoFatesWhileEverybodyCallsTheEngine) {
    OperationCounts counts("engine");
    for (Rounds rounds; rounds.Next();) {
        const test_support::Deadline deadline("the threads that call the engine", std::chrono::minutes(5));
        EngineRound round(rounds.Number(), counts);
        round.Run();
        round.CheckEnd();
        counts.Add("rounds");
        if (testing::Test::HasFailure()) {
            return;
        }
    }
}
