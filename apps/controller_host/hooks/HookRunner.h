#pragma once

#include "platform/processes/OutputPipe.h"
#include "platform/processes/Process.h"
#include "platform/processes/Waiting.h"
#include "platform/system/OwnedHandle.h"

#include <chrono>
#include <cstddef>
#include <deque>
#include <list>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

/// One call of a user's command at an event.
struct HookCall {
    /// The event: "jobEnded".
    std::wstring event;
    /// For the log: "job 7"; empty if the event is not about a job.
    std::wstring subject;
    /// The program and its arguments; not empty.
    std::vector<std::wstring> command;
    /// The current directory of the command.
    std::wstring directory;
    /// Variables as in `platform::ProcessStart`.
    std::vector<std::pair<std::wstring, std::optional<std::wstring>>> environment;
};

/// Runs commands beside the host's loop, without a shell: each in a supervising process (`SuperviseHook`), some at a
/// time, in the order of the calls. Their output is discarded. Failures are logged. Uses one thread, which starts with
/// the first call.
class HookRunner {
public:
    struct Limits {
        /// After this time, a command is ended with all processes that it has started.
        std::chrono::milliseconds runTime{60'000};
        /// How many commands run at once.
        std::size_t running = 4;
        /// How many further calls wait; what exceeds them is dropped.
        std::size_t waiting = 1000;
        /// How long the destructor lets commands run.
        std::chrono::milliseconds grace{2000};
    };

    HookRunner() : HookRunner(Limits{}) {}
    explicit HookRunner(const Limits& runnerLimits) : limits(runnerLimits) {}
    /// Returns when all commands have ended or were ended after the grace time.
    ~HookRunner();
    HookRunner(const HookRunner&) = delete;
    HookRunner& operator=(const HookRunner&) = delete;

    /// Queues a call and returns at once. Threads: any.
    void Run(HookCall call);

private:
    struct Process {
        HookCall call;
        platform::OutputPipe output;
        platform::OwnedHandle supervisor;
    };
    using Time = std::chrono::steady_clock::time_point;

    void Work();
    bool IsDone();
    std::optional<std::chrono::milliseconds> LongestWait();
    void ReapEnded();
    void StartWaiting();
    std::optional<HookCall> TakeWaiting();
    void Start(HookCall call);
    std::wstring StartSupervisor(Process& process) const;
    platform::ProcessStart SupervisorStart(const Process& process, const std::wstring& program, void* host) const;
    void EndAll();
    static void Report(Process& process);

    const Limits limits;
    std::mutex mutex;
    std::deque<HookCall> waiting;
    std::size_t dropped = 0;
    /// When the remaining commands are ended; set by the destructor.
    std::optional<Time> end;
    std::thread worker;
    /// A call waits, or the end was set.
    platform::Event changed;
    /// Tells supervisors to end their commands.
    platform::Event stop;
    /// Used by the worker only.
    std::list<Process> processes;
};
