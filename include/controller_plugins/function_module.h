#pragma once

#include "controller_plugins/export.h"

#include <charconv>
#include <cstdint>
#include <string>
#include <vector>

/// The contract of function modules. The setting "functionModules" names them; the host loads them when it starts and
/// calls their functions by name. A module is a shared library with the two exports below. They pass objects of the
/// standard library, so a module is built with the host's compiler against the same shared standard library.
///
/// Modules in C implement `controller_plugins/c_function_module.h` instead.
///
/// The functions that the host calls:
///
/// - "RunScenario" starts the job's process and returns without waiting for it: the host does nothing else meanwhile.
///   `input` is the run request, in the layout of the file run_scenario_info.json (docs/work-directory-files.md); paths
///   in it have backslashes on both systems. The module makes the work directory.
///   On success it returns 0, and `output` names the process (`AnswerWithProcessHandle`, `AnswerWithProcessId`); with
///   another answer the host watches no process, and takes the job as ended at its next look.
///   On failure it returns another number, which fails the job; `output` may say why, one or two sentences for people:
///   they become the job's message.
/// - "CancelScenario" asks the process of the job whose id is `input` to stop, and returns 0. Any other number is no
///   failure of the cancellation: the host makes the file "killprocess" in the work directory in any case.
/// - "Terminate" is called when the host ends; nothing becomes of its result. It may come while another call runs.
///
/// But for that, calls do not overlap. Exceptions are logged, and count as a failure. `callback` may be null.
extern "C" {

/// Called once, after the module was loaded: appends the names of the functions that the module offers. Of two modules
/// that offer the same function the one that the settings name later is called.
CONTROLLER_PLUGIN_EXPORT void GetFunctions(std::vector<std::string>* functionNames);

/// Calls a function. Takes the caller's own objects; `output` is empty and to be filled.
CONTROLLER_PLUGIN_EXPORT long CallFunction(const std::string& functionName, const std::wstring& input,
                                           std::wstring& output,
                                           long (*callback)(const std::wstring&, const std::wstring&));
}

namespace controller_plugins {

/// The answer of "RunScenario" that hands over a process handle: on Windows the value of the `HANDLE`, with the rights
/// SYNCHRONIZE and PROCESS_QUERY_LIMITED_INFORMATION; on Linux the pidfd itself (`pidfd_open`). From then on the host
/// owns it and closes it. What is no handle of another process is refused, logged, and left open.
inline std::wstring AnswerWithProcessHandle(std::uint64_t number) {
    char digits[16];
    const auto end = std::to_chars(digits, digits + sizeof digits, number, 16).ptr;
    return L"{\"ProcessHandle\":\"0x" + std::wstring(digits, end) + L"\"}";
}

/// The answer of "RunScenario" that names a process by its id; the host opens it. The id must still be the process's
/// when the host does so, right after the call: on Linux the module does not reap its child (the host does that), on
/// Windows a process that ends at once may be gone, so that a handle is better there.
inline std::wstring AnswerWithProcessId(std::uint32_t id) {
    return L"{\"ProcessId\":" + std::to_wstring(id) + L"}";
}

} // namespace controller_plugins
