#pragma once

#include "controller_host/Host.h"

#include <chrono>
#include <string>
#include <vector>

/// One run of a hook, as the arguments of a `controller_host` process that supervises it. The supervisor is a process
/// of its own, because only then it can end all processes that the hook has started, on both systems.
struct SupervisedHook {
    /// Inherited handles (`platform::InheritedHandleText`). The hook is ended when one of them is signalled.
    std::wstring stop;
    std::wstring host;
    std::chrono::milliseconds limit{};
    std::wstring directory;
    /// Absolute.
    std::wstring program;
    std::vector<std::wstring> arguments;
};

/// The arguments that start a supervisor, and the same read back: those after `superviseHookOption`. False if they are
/// incomplete.
inline constexpr const wchar_t* superviseHookOption = L"--supervise-hook";
std::vector<std::wstring> ArgumentsOf(const SupervisedHook& hook);
[[nodiscard]] bool ReadSupervisedHook(const std::vector<std::wstring>& arguments, SupervisedHook& hook);

/// Runs the hook until it ends, its time is over, or it must stop, and ends all processes that it has started. Returns
/// `Ended` if the hook succeeded; otherwise writes to standard output what happened to it, as the end of a sentence,
/// and returns `CouldNotRun`. Called by main() while the process has a single thread.
HostExit SuperviseHook(const std::vector<std::wstring>& arguments);
