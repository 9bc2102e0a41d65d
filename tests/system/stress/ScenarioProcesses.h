#pragma once

#include "formats/RunProtocol.h"
#include "kit/doubles/ScriptedProcess.h"
#include "kit/modules/RecordingModule.h"
#include "system/stress/EngineReports.h"

#include <atomic>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <random>
#include <set>
#include <string>

class JobEntryManagerBase;

/// A function module and its processes. They report progress and a result through files or through the engine, and end
/// by themselves or, some of them, only when asked.
class ScenarioProcesses {
public:
    ScenarioProcesses(EngineReports& engineReports, std::uint32_t seed) : reports(engineReports), random(seed) {}

    /// The module's "CallFunction"; any thread.
    [[nodiscard]] long Answer(const test_modules::Call& call, std::wstring& output);

    /// Simulates the processes, one after another, until `End`; none may be started after that.
    void Live(JobEntryManagerBase& engine);
    void End();

private:
    struct Process {
        run_protocol::RunScenarioInfo info;
        ScriptedProcess process;
    };

    long RunScenario(const std::wstring& request, std::wstring& output);
    long CancelScenario(const std::wstring& jobId);
    bool WasAskedToStop(const Process& process);
    /// True if the process was asked to stop before its work was done.
    bool Work(Process& process);
    void Finish(Process& process, bool wasAskedToStop, JobEntryManagerBase& engine);
    void Report(const Process& process, bool wasAskedToStop, JobEntryManagerBase& engine);
    bool Chance(unsigned percent);

    EngineReports& reports;
    std::mutex mutex;
    std::condition_variable changed;
    std::deque<Process> processes;
    /// Jobs that the module was asked to stop.
    std::set<std::wstring> stopping;
    bool isOver = false;
    std::mt19937 random;
};
