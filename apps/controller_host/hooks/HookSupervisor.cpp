#include "controller_host/hooks/HookSupervisor.h"

#include "controller_host/Output.h"
#include "platform/processes/ProcessTree.h"
#include "platform/processes/StopSignal.h"
#include "platform/processes/Waiting.h"
#include "text/Numbers.h"
#include "text/Text.h"

#include <algorithm>
#include <cstddef>
#include <optional>

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

/// Stop, host, limit, directory, program.
constexpr std::size_t fixedArguments = 5;

/// Returns what happened; empty if the hook succeeded.
std::wstring WaitForEnd(platform::ProcessTree& tree, const std::vector<void*>& reasonsToStop, milliseconds limit) {
    const auto deadline = steady_clock::now() + limit;
    std::vector<void*> handles{tree.Root()};
    handles.insert(handles.end(), reasonsToStop.begin(), reasonsToStop.end());
    if (tree.ChildExited() != nullptr) {
        handles.push_back(tree.ChildExited());
    }
    for (;;) {
        tree.ReapChildren();
        if (!platform::IsProcessRunning(tree.Root())) {
            const std::int32_t exitCode = tree.RootExitCode().value_or(-1);
            return exitCode == 0 ? std::wstring() : L"ended with " + platform::ExitCodeText(exitCode);
        }
        if (!std::all_of(reasonsToStop.begin(), reasonsToStop.end(), platform::IsProcessRunning)) {
            return L"was ended because the host ends";
        }
        const auto left = std::chrono::ceil<milliseconds>(deadline - steady_clock::now());
        if (left <= milliseconds(0)) {
            return L"did not end within " + std::to_wstring(limit.count() / 1000) +
                   L" s and was ended with all processes that it had started";
        }
        platform::WaitForAny(handles, left);
    }
}

std::wstring RunSupervised(const SupervisedHook& hook) {
    const platform::OwnedHandle stop = platform::TakeInheritedHandle(hook.stop);
    const platform::OwnedHandle host = platform::TakeInheritedHandle(hook.host);
    if (!stop || !host) {
        return L"was not started: its supervisor has no handle of the host";
    }
    const platform::StopSignal stopSignal;
    platform::ProcessTree tree;
    platform::ProcessStart start;
    start.program = hook.program;
    start.arguments = hook.arguments;
    start.currentDirectory = hook.directory;
    if (const platform::Error result = tree.Start(start); !result) {
        return L"cannot be started: " + result.Text();
    }
    std::wstring problem = WaitForEnd(tree, {stop.Get(), host.Get(), stopSignal.Handle()}, hook.limit);
    tree.Kill();
    return problem;
}

} // namespace

std::vector<std::wstring> ArgumentsOf(const SupervisedHook& hook) {
    std::vector<std::wstring> arguments{
        superviseHookOption, hook.stop, hook.host, std::to_wstring(hook.limit.count()), hook.directory, hook.program};
    arguments.insert(arguments.end(), hook.arguments.begin(), hook.arguments.end());
    return arguments;
}

bool ReadSupervisedHook(const std::vector<std::wstring>& arguments, SupervisedHook& hook) {
    if (arguments.size() < fixedArguments) {
        return false;
    }
    const auto rest = arguments.begin() + fixedArguments;
    hook = {arguments[0], arguments[1], milliseconds(numbers::ReadInteger(arguments[2])),
            arguments[3], arguments[4], {rest, arguments.end()}};
    return true;
}

HostExit SuperviseHook(const std::vector<std::wstring>& arguments) {
    SupervisedHook hook;
    if (!ReadSupervisedHook(arguments, hook)) {
        return HostExit::WrongUse;
    }
    const std::wstring problem = RunSupervised(hook);
    if (problem.empty()) {
        return HostExit::Ended;
    }
    (void)Print(text::ToUtf8(problem));
    return HostExit::CouldNotRun;
}
