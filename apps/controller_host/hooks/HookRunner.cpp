#include "controller_host/hooks/HookRunner.h"

#include "CommonControllerLib/ControllerLogManager.h"
#include "controller_host/hooks/HookSupervisor.h"
#include "platform/files/NativePath.h"
#include "platform/processes/Process.h"
#include "platform/system/Environment.h"
#include "text/Text.h"

#include <algorithm>
#include <system_error>

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

/// A supervisor needs at most 10 s to end its processes.
constexpr std::chrono::seconds supervisorEndTime{15};
constexpr std::size_t longestReport = 4096;

void Warn(const HookCall& call, const std::wstring& problem) {
    ControllerLogManager::WarnLog(L"The hook \"" + call.event + L"\" (" + call.command.front() + L")" +
                                  (call.subject.empty() ? L"" : L" for " + call.subject) + L" " + problem + L".");
}

void WarnOfDropped(std::size_t count) {
    if (count > 0) {
        ControllerLogManager::WarnLog(L"Calls of hooks that were dropped, because too many were waiting or the host "
                                      L"ends: " +
                                      std::to_wstring(count) + L".");
    }
}

} // namespace

HookRunner::~HookRunner() {
    {
        const std::lock_guard lock(mutex);
        end = steady_clock::now() + limits.grace;
    }
    changed.Raise();
    if (worker.joinable()) {
        worker.join();
    }
    WarnOfDropped(dropped + waiting.size());
}

void HookRunner::Run(HookCall call) {
    const std::lock_guard lock(mutex);
    if (waiting.size() >= limits.waiting) {
        ++dropped;
        return;
    }
    waiting.push_back(std::move(call));
    try {
        if (!worker.joinable()) {
            worker = std::thread([this] { Work(); });
        }
    } catch (const std::system_error& failure) {
        Warn(waiting.back(), L"waits: no thread can be started: " + text::FromUtf8(failure.what()));
    }
    changed.Raise();
}

void HookRunner::Work() {
    for (;;) {
        // Before the queue is read: what comes later ends the next wait.
        changed.Clear();
        ReapEnded();
        StartWaiting();
        if (IsDone()) {
            break;
        }
        std::vector<void*> handles{changed.Handle()};
        for (const Process& process : processes) {
            handles.push_back(process.supervisor.Get());
        }
        platform::WaitForAny(handles, LongestWait());
    }
    EndAll();
}

bool HookRunner::IsDone() {
    const std::lock_guard lock(mutex);
    return end && ((waiting.empty() && processes.empty()) || steady_clock::now() >= *end);
}

std::optional<milliseconds> HookRunner::LongestWait() {
    const std::lock_guard lock(mutex);
    if (!end) {
        return std::nullopt;
    }
    return std::max(milliseconds(0), std::chrono::ceil<milliseconds>(*end - steady_clock::now()));
}

void HookRunner::ReapEnded() {
    processes.remove_if([](Process& process) {
        const bool hasEnded = !platform::IsProcessRunning(process.supervisor.Get());
        if (hasEnded) {
            Report(process);
        }
        return hasEnded;
    });
}

void HookRunner::StartWaiting() {
    while (processes.size() < limits.running) {
        std::optional<HookCall> call = TakeWaiting();
        if (!call) {
            return;
        }
        Start(std::move(*call));
    }
}

std::optional<HookCall> HookRunner::TakeWaiting() {
    const std::lock_guard lock(mutex);
    if (waiting.empty()) {
        return std::nullopt;
    }
    WarnOfDropped(std::exchange(dropped, 0));
    HookCall call = std::move(waiting.front());
    waiting.pop_front();
    return call;
}

void HookRunner::Start(HookCall call) {
    Process& process = processes.emplace_back();
    process.call = std::move(call);
    if (const std::wstring problem = StartSupervisor(process); !problem.empty()) {
        Warn(process.call, problem);
        processes.pop_back();
    }
}

/// Returns the problem; empty on success.
std::wstring HookRunner::StartSupervisor(Process& process) const {
    const auto program = platform::FindRunnable(process.call.command.front());
    if (!program) {
        return L"cannot be started: the program is missing or cannot be run. Check the setting \"hooks\"";
    }
    const platform::OwnedHandle host = platform::OpenSelf();
    if (!host || !process.output.Open()) {
        return L"cannot be started: the system has no more handles";
    }
    const platform::ProcessStart start = SupervisorStart(process, *program, host.Get());
    const platform::Error result = platform::StartProcess(start, process.supervisor);
    process.output.CloseWriteEnd();
    return result
               ? std::wstring()
               : L"cannot be started: its supervisor " + platform::ToNativeText(start.program) + L": " + result.Text();
}

platform::ProcessStart HookRunner::SupervisorStart(const Process& process, const std::wstring& program,
                                                   void* host) const {
    SupervisedHook hook;
    hook.stop = platform::InheritedHandleText(stop.Handle());
    hook.host = platform::InheritedHandleText(host);
    hook.limit = limits.runTime;
    hook.directory = process.call.directory;
    hook.program = program;
    hook.arguments.assign(process.call.command.begin() + 1, process.call.command.end());
    platform::ProcessStart start;
    start.program = platform::ProgramDirectory() + L"\\controller_host" + platform::programExtension;
    start.arguments = ArgumentsOf(hook);
    start.environment = process.call.environment;
    start.detached = true;
    start.output = process.output.WriteEnd();
    start.inherited = {stop.Handle(), host};
    return start;
}

void HookRunner::EndAll() {
    stop.Raise();
    for (Process& process : processes) {
        platform::WaitForAny({process.supervisor.Get()}, supervisorEndTime);
        Report(process);
    }
}

void HookRunner::Report(Process& process) {
    std::string said;
    process.output.ReadAvailable(longestReport, said);
    const auto exitCode = platform::ExitCode(process.supervisor.Get());
    if (!said.empty()) {
        Warn(process.call, text::FromUtf8(said));
    } else if (!exitCode) {
        Warn(process.call, L"still runs");
    } else if (*exitCode != 0) {
        Warn(process.call, L"was lost: its supervisor ended with " + platform::ExitCodeText(*exitCode));
    }
}
