#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/processes/OutputPipe.h"
#include "platform/processes/Process.h"

/// Processes started by tests, mostly of the program `test_process`.
namespace test_support {

/// The path of a program of the build.
std::wstring ProgramPath(const std::wstring& name);

/// The command that starts `test_process` with these arguments.
platform::ProcessStart TestProcess(const std::vector<std::wstring>& arguments);

/// The output of a process, complete when all processes that share it have ended, and its exit code.
struct Ending {
    std::string output;
    std::optional<std::int32_t> exitCode;
};

/// Starts a process with its output in a pipe, and waits for its end. There is no exit code if it could not be started.
/// After the deadline its output is shown, and it is ended with this program and all started processes (`Deadline`).
Ending RunToEnd(platform::ProcessStart start);

/// Reads until all writers have closed the pipe; `whose` names the output in the message of the deadline.
std::string ReadToEnd(platform::OutputPipe& pipe, const std::string& whose = "a process");

/// Reads until `text` has arrived; false if the output ends first.
[[nodiscard]] bool ReadUntil(platform::OutputPipe& pipe, const std::string& text);

/// Waits for a process or event.
[[nodiscard]] bool WaitUntilSignalled(void* handle);

} // namespace test_support
