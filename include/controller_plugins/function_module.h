#pragma once

#include "controller_plugins/export.h"

#include <charconv>
#include <cstdint>
#include <string>
#include <vector>

/// The contract of function modules. The setting "functionModules" lists them; the host loads them at its start and
/// calls their functions by name. A module is a shared library with the two exports below. Objects of the standard
/// library cross the module boundary, so a module must be built with the host's compiler and the same shared standard
/// library.
///
/// Modules in C implement `controller_plugins/c_function_module.h` instead.
///
/// The functions that the host calls:
///
/// - "RunScenario" starts the job's process and returns without waiting for it: the host is blocked during the call.
///   `input` is the run request, in the layout of the file run_scenario_info.json (docs/work-directory-files.md); paths
///   in it have backslashes on both systems. The module creates the work directory. On success it returns 0 and sets
///   `output` to identify the process (`AnswerWithProcessHandle`, `AnswerWithProcessId`); with any other `output` the
///   host watches no process and treats the job as ended at its next check. On failure it returns another number, and
///   the job fails; `output` may give the reason in one or two sentences for people, which become the job's message.
/// - "CancelScenario" asks the process of the job whose id is `input` to stop, and returns 0. Any other result does not
///   make the cancellation fail: the host creates the file "killprocess" in the work directory in any case.
/// - "Terminate" is called when the host ends; its result is ignored. It may be called while another function runs.
///
/// Except for "Terminate", calls do not overlap. Exceptions are logged and treated as failures. `callback` may be null.
extern "C" {

/// Called once, after the module was loaded: appends the names of the functions that the module provides. If two
/// modules provide the same function, the one listed later in the settings is called.
CONTROLLER_PLUGIN_EXPORT void GetFunctions(std::vector<std::string>* functionNames);

/// Calls a function. The arguments belong to the caller; `output` is empty at first and filled by the module.
CONTROLLER_PLUGIN_EXPORT long CallFunction(const std::string& functionName, const std::wstring& input,
                                           std::wstring& output,
                                           long (*callback)(const std::wstring&, const std::wstring&));
}

namespace controller_plugins {

/// The answer of "RunScenario" that passes a process handle: on Windows the value of the `HANDLE`, with the rights
/// SYNCHRONIZE and PROCESS_QUERY_LIMITED_INFORMATION; on Linux the pidfd itself (`pidfd_open`). The host takes
/// ownership and closes it. A value that is not a handle of another process is rejected, logged, and not closed.
inline std::wstring AnswerWithProcessHandle(std::uint64_t number) {
    char digits[16];
    const auto end = std::to_chars(digits, digits + sizeof digits, number, 16).ptr;
    return L"{\"ProcessHandle\":\"0x" + std::wstring(digits, end) + L"\"}";
}

/// The answer of "RunScenario" that identifies a process by its id; the host opens it directly after the call. The id
/// must still refer to the process then: on Linux the module must not reap its child (the host reaps it); on Windows a
/// process that ends at once may have disappeared, so prefer a handle there.
inline std::wstring AnswerWithProcessId(std::uint32_t id) {
    return L"{\"ProcessId\":" + std::to_wstring(id) + L"}";
}

} // namespace controller_plugins
