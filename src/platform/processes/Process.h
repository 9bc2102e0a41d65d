#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/processes/ProcessHandle.h"
#include "platform/system/Error.h"

namespace platform {

/// What to start, and what it gets from its parent: nothing but what is named here.
struct ProcessStart {
    /// The program: an absolute path, or (with `searchPath`) a bare name looked up in PATH (see `FindProgram`).
    std::wstring program;
    bool searchPath = false;
    /// The arguments after the program's own name; quoted for the child as its C runtime reads them.
    std::vector<std::wstring> arguments;
    /// The child's current directory; empty: the parent's.
    std::wstring currentDirectory;
    /// Variables that differ from the parent's: a value sets, no value removes.
    std::vector<std::pair<std::wstring, std::optional<std::wstring>>> environment;
    /// Out of the parent's console and session: no window, no Ctrl-C, no hang-up from there.
    bool detached = false;
    /// Where standard output and error go; null: nowhere. Standard input is always empty.
    void* output = nullptr;
    /// Handles that the child inherits besides (see `InheritedHandleText`).
    std::vector<void*> inherited;
};

/// Starts a process (posix_spawn; CreateProcessW with an explicit handle list), never through a shell. On success
/// `process` is its handle, which the caller owns. Fails with `NotFound` when the program or the current directory is
/// missing, `NotAbsolute` for a relative path, `TooLarge` on Windows for a current directory beyond 258 characters
/// without a short name, `NotSupported` for a text with U+0000 and, on Windows, for a program that is not ".exe" or
/// ".com" (the system would hand it to a command interpreter). Any thread.
Error StartProcess(const ProcessStart& start, OwnedHandle& process);

/// A handle to this very process that a child can inherit and wait for, to notice that its parent has ended by whatever
/// means. Null when the system has none left.
[[nodiscard]] OwnedHandle OpenSelf();

/// How a child is told an inherited handle in an argument, and how it takes it from there: null when the text is not
/// one or names no open handle. A handle can be taken once; the child's own children do not get it unasked.
std::wstring InheritedHandleText(void* handle);
[[nodiscard]] OwnedHandle TakeInheritedHandle(const std::wstring& text);

/// Asks a process to end, as its user would (SIGTERM), and wakes it up for that where it was stopped. On Windows there
/// is no such way for a process without a window: nothing happens.
void RequestTermination(void* process);

/// The exit code of a process that has ended: what it returned, or on Linux 128 + the signal that ended it. Nothing
/// while it runs or when it cannot be told (on Linux: no child of this process). The answer stays until the handle is
/// closed, which reaps the child.
[[nodiscard]] std::optional<std::int32_t> ExitCode(void* process);

/// What an exit code says, as the end of a sentence: "exit code 3"; "exit code 137 (signal 9, Killed)" on Linux, "exit
/// code -1073741819 (0xc0000005)" on Windows.
std::wstring ExitCodeText(std::int32_t exitCode);

/// The system's number of a process, for messages; 0 when it cannot be told.
std::uint32_t ProcessNumber(void* process);
std::uint32_t OwnProcessNumber();

} // namespace platform
