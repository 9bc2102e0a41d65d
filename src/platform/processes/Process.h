#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/system/Error.h"
#include "platform/system/OwnedHandle.h"

namespace platform {

/// Describes a child process. It inherits only what is named here.
struct ProcessStart {
    /// The program: an absolute path or, with `searchPath`, a bare name looked up in PATH (see `FindProgram`).
    std::wstring program;
    bool searchPath = false;
    /// The arguments after the program name. Quoted so that the C runtime of the child reads them unchanged.
    std::vector<std::wstring> arguments;
    /// The child's current directory; empty: the parent's.
    std::wstring currentDirectory;
    /// Variables that differ from the parent's: a value sets the variable, no value removes it.
    std::vector<std::pair<std::wstring, std::optional<std::wstring>>> environment;
    /// Detached from the parent's console and session: no window, no Ctrl-C, no hang-up from there.
    bool detached = false;
    /// Standard output and error; null: discarded. Standard input is always empty.
    void* output = nullptr;
    /// Further handles that the child inherits (see `InheritedHandleText`).
    std::vector<void*> inherited;
};

/// Starts a process (posix_spawn; CreateProcessW with an explicit handle list), never through a shell. On success,
/// `process` is its handle, owned by the caller. Fails with `NotFound` if the program or current directory is missing,
/// `NotAbsolute` for a relative path, `TooLarge` on Windows for a current directory of more than 258 characters without
/// a short name, and `NotSupported` for a text with U+0000 or, on Windows, for a program that is not ".exe" or ".com"
/// (the system would pass it to a command interpreter). Threads: any.
Error StartProcess(const ProcessStart& start, OwnedHandle& process);

/// Same as `StartProcess`, with a separate standard error for the child; null: discarded.
Error StartProcess(const ProcessStart& start, void* errorOutput, OwnedHandle& process);

/// Checks common to both systems before a process is started: no text may contain U+0000, which would truncate it. On
/// success, `program` is the absolute path of the file to run.
Error CheckProcessStart(const ProcessStart& start, std::wstring& program);

/// Looks up a bare program name in the directories of PATH, and returns its absolute path. Ignores the current
/// directory and relative entries of PATH. On Windows, a name without an extension stands for ".exe", then ".com".
/// Returns nothing if there is no such program. Threads: any.
[[nodiscard]] std::optional<std::wstring> FindProgram(const std::wstring& name);

/// True if this system starts such a file itself. On Windows only ".exe" and ".com": others would be passed to a
/// command interpreter, which parses arguments differently. On Linux any file.
bool IsProgramName(const std::wstring& path);

/// True if `path` names a regular file with execute permission (follows links).
bool IsProgramFile(const std::wstring& path);

/// The absolute path of the program that a setting names, by a bare name (`FindProgram`) or an absolute path. Nothing
/// if there is no program that this system can start.
[[nodiscard]] std::optional<std::wstring> FindRunnable(const std::wstring& program);

/// The file names that a bare program name stands for, in search order.
std::vector<std::wstring> ProgramFileNames(const std::wstring& name);

/// A handle to this process that a child can inherit and wait for, to notice any end of its parent. Null if the system
/// has no handle left.
[[nodiscard]] OwnedHandle OpenSelf();

/// Converts an inherited handle to the text of an argument, and back in the child. The conversion back returns null if
/// the text does not name an open handle. A handle can be taken once; the child's own children do not inherit it by
/// default.
std::wstring InheritedHandleText(void* handle);
[[nodiscard]] OwnedHandle TakeInheritedHandle(const std::wstring& text);

/// Marks an inherited handle close-on-exec, so that children of this process get it only if it is passed explicitly.
/// Returns false if it is not an open handle.
[[nodiscard]] bool SetCloseOnExec(void* handle);

/// Asks a process to end (SIGTERM), and resumes a stopped one so that it gets the signal. Returns false on Windows,
/// which has no such request for a process without a window.
bool RequestTermination(void* process);

/// The exit code of a process that has ended: its return value, or on Linux 128 + the number of the fatal signal.
/// Nothing while it runs or if the code is not available (on Linux: not a child of this process). The code stays
/// available until the handle is closed, which reaps the child.
[[nodiscard]] std::optional<std::int32_t> ExitCode(void* process);

/// Describes an exit code for the end of a sentence: "exit code 3"; "exit code 137 (signal 9, Killed)" on Linux, "exit
/// code -1073741819 (0xc0000005)" on Windows.
std::wstring ExitCodeText(std::int32_t exitCode);

/// True if the system ended a process with this exit code: by a signal, or on Windows by an exception.
bool IsCrash(std::int32_t exitCode);

/// The system's process id, for messages; 0 if unknown.
std::uint32_t ProcessNumber(void* process);
std::uint32_t OwnProcessNumber();

/// The number of the calling thread for the tools of the system.
std::uint32_t OwnThreadNumber();

} // namespace platform
