#pragma once

#include <optional>
#include <string>
#include <vector>

/// What the system provides to a program: its variables, arguments and directories; and the set-up of a program for it.
namespace platform {

/// The current value of an environment variable in the C runtime; nothing if it is not set.
[[nodiscard]] std::optional<std::wstring> GetEnvironment(const std::wstring& name);

/// Sets a variable of this process; an empty value removes it. Ignores a name that is empty or contains "=". Must not
/// run while other threads read the environment.
void SetEnvironment(const std::wstring& name, const std::wstring& value);

/// The arguments of main() after the program name: UTF-8 on Linux (`FromUtf8`), the wide command line on Windows.
std::vector<std::wstring> ProgramArguments(int count, const char* const* values);

// Well-known directories of this machine, as library text: absolute, without a trailing separator. Empty if the system
// does not define the directory.

/// Name of the application's own directory below the next two, in the convention of this system.
extern const wchar_t* const applicationDirectoryName;

/// Directory of the user's settings: %APPDATA% on Windows; $XDG_CONFIG_HOME or ~/.config on Linux.
std::wstring UserConfigurationDirectory();

/// Directory of the user's data on this machine: %LOCALAPPDATA% on Windows; $XDG_DATA_HOME or ~/.local/share on Linux.
std::wstring UserDataDirectory();

/// The directory for temporary files.
std::wstring TemporaryDirectory();

std::wstring CurrentDirectory();

/// The directory of the running program.
std::wstring ProgramDirectory();

/// Returns large memory blocks to the system as soon as they are freed, for long-running processes with occasional
/// peaks. Called once by main(), before other threads exist.
void TrimHeapEagerly();

/// Returns the free pages between allocations to the system; the allocator keeps them otherwise. For a program at rest:
/// its next allocations take them again. No effect on Windows. Threads: any.
void ReleaseFreeMemory();

/// Makes a write beyond the file size limit ("ulimit -f") fail like a write to a full disk; by default the signal
/// SIGXFSZ ends the process. Processes that this one starts are not affected. No effect on Windows, which has no such
/// limit.
void IgnoreFileSizeSignal();

/// The argument of `std::random_device` that is fastest on this system.
extern const char* const randomSource;

// The system calls of the functions above, for names that the system accepts.

[[nodiscard]] std::optional<std::wstring> ReadVariable(const std::wstring& name);
void WriteVariable(const std::wstring& name, const std::wstring& value);
void RemoveVariable(const std::wstring& name);

} // namespace platform
