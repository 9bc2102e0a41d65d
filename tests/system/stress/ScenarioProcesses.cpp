#include "system/stress/ScenarioProcesses.h"

#include "CommonControllerLib/JobEntryManagerBase.h"
#include "CommonControllerLib/PathFuncs.h"
#include "platform/files/Directory.h"
#include "platform/files/FileSystem.h"

#include <gtest/gtest.h>

#include <thread>

long ScenarioProcesses::Answer(const test_modules::Call& call, std::wstring& output) {
    if (call.function == "RunScenario") {
        return RunScenario(call.input, output);
    }
    if (call.function == "CancelScenario") {
        return CancelScenario(call.input);
    }
    return 0;
}

long ScenarioProcesses::RunScenario(const std::wstring& request, std::wstring& output) {
    run_protocol::RunScenarioInfo info;
    std::wstring problem;
    if (!run_protocol::ParseRunScenarioInfo(request, info, problem)) {
        return 2;
    }
    reports.Run(info.jobId);
    if (Chance(3)) {
        return 1;
    }
    if (Chance(3)) {
        return 0; // without a process
    }
    EXPECT_TRUE(platform::EnsureDirectory(info.workDir));
    {
        const std::lock_guard lock(mutex);
        processes.push_back({std::move(info), ScriptedProcess()});
        output = processes.back().process.Answer();
    }
    changed.notify_all();
    return 0;
}

/// Refuses every other request: then only the file "killprocess" tells the process.
long ScenarioProcesses::CancelScenario(const std::wstring& jobId) {
    if (Chance(50)) {
        return -1;
    }
    const std::lock_guard lock(mutex);
    stopping.insert(jobId);
    return 0;
}

void ScenarioProcesses::Live(JobEntryManagerBase& engine) {
    for (;;) {
        std::unique_lock lock(mutex);
        changed.wait(lock, [this] { return isOver || !processes.empty(); });
        if (processes.empty()) {
            return;
        }
        Process process = std::move(processes.front());
        processes.pop_front();
        lock.unlock();
        Finish(process, Work(process), engine);
    }
}

void ScenarioProcesses::End() {
    {
        const std::lock_guard lock(mutex);
        isOver = true;
    }
    changed.notify_all();
}

bool ScenarioProcesses::WasAskedToStop(const Process& process) {
    const std::lock_guard lock(mutex);
    return stopping.contains(process.info.jobId) ||
           platform::Exists(PathFuncs::Join(process.info.workDir, run_protocol::killFileName));
}

bool ScenarioProcesses::Work(Process& process) {
    // Some wait so long that they rarely end unasked.
    const int steps = Chance(30) ? 300 : 3;
    for (int step = 0; step < steps; ++step) {
        if (WasAskedToStop(process)) {
            return true;
        }
        if (step < 3) {
            EXPECT_TRUE(
                run_protocol::WriteFile(run_protocol::SerializeProgress(process.info.jobId, 10 * step, L"working"),
                                        PathFuncs::Join(process.info.workDir, run_protocol::progressFileName)));
        }
        std::this_thread::yield();
    }
    return false;
}

void ScenarioProcesses::Finish(Process& process, bool wasAskedToStop, JobEntryManagerBase& engine) {
    if (Chance(20)) {
        Report(process, wasAskedToStop, engine);
    } else if (Chance(80)) {
        const bool isWritten = run_protocol::WriteFile(
            run_protocol::SerializeRunScenarioResult({process.info.jobId, Chance(80), {{0, L"done"}}, {}}),
            PathFuncs::Join(process.info.workDir, run_protocol::resultFileName));
        EXPECT_TRUE(isWritten) << "The result of a job cannot be written.";
    }
    process.process.Finish();
}

/// Reports the end to the engine directly. This is the job's only end while its process runs.
void ScenarioProcesses::Report(const Process& process, bool wasAskedToStop, JobEntryManagerBase& engine) {
    const std::wstring result =
        run_protocol::SerializeRunScenarioResult({process.info.jobId, Chance(80), {{0, L"done"}}, {}});
    std::vector<JobStatusInfo> changes;
    if (wasAskedToStop && Chance(50)) {
        EXPECT_TRUE(engine.UpdateToCanceled(result, changes));
    } else {
        EXPECT_TRUE(engine.UpdateResult(result, changes));
    }
    reports.Ended(changes);
}

bool ScenarioProcesses::Chance(unsigned percent) {
    const std::lock_guard lock(mutex);
    return random() % 100 < percent;
}
