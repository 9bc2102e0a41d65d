#pragma once

#include <optional>
#include <string>
#include <vector>

namespace platform {

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

} // namespace platform
