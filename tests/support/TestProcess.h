#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/processes/Pipe.h"
#include "platform/processes/Process.h"

/// Processes that tests start, most of them of the program `test_process`.
namespace test_support {

/// The path of a program of the build by its name.
std::wstring ProgramPath(const std::wstring& name);

/// How to start `test_process` with a command and what it needs.
platform::ProcessStart TestProcess(const std::vector<std::wstring>& arguments);

/// What a process printed until it and all that share its output had ended, and how it ended.
struct Ending {
    std::string output;
    std::optional<std::int32_t> exitCode;
};

/// Starts a process, with its output in a pipe, and waits for its end. No exit code when it could not be started. When
/// it takes too long, what it has printed is shown, and it ends with this program and all that was started
/// (`Deadline`).
Ending RunToEnd(platform::ProcessStart start);

/// Reads until all who could write have closed their ends; `whose` output it is, for the message when that takes too
/// long.
std::string ReadToEnd(platform::OutputPipe& pipe, const std::string& whose = "a process");

/// Reads until `text` has come; false when the end comes first.
[[nodiscard]] bool ReadUntil(platform::OutputPipe& pipe, const std::string& text);

/// Waits for a process or event.
[[nodiscard]] bool WaitUntilSignalled(void* handle);

} // namespace test_support
