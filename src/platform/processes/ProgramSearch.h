#pragma once

#include <optional>
#include <string>
#include <vector>

namespace platform {

/// The absolute path of the program that a bare name stands for, looked up in the directories of PATH alone: never in
/// the current directory, nor in an entry of PATH that is not absolute. On Windows a name without an extension stands
/// for
/// ".exe", then ".com". Nothing when there is none. Any thread.
[[nodiscard]] std::optional<std::wstring> FindProgram(const std::wstring& name);

/// True when this system starts such a file itself. On Windows: ".exe" and ".com", because anything else would be
/// handed to a command interpreter, which reads arguments by rules of its own. On Linux: any.
bool IsProgramName(const std::wstring& path);

/// True when `path` names a regular file that may be executed (links followed).
bool IsProgramFile(const std::wstring& path);

/// The absolute path of the program that a setting names, by a bare name (`FindProgram`) or by its absolute path.
/// Nothing when there is none that this system can start.
[[nodiscard]] std::optional<std::wstring> FindRunnable(const std::wstring& program);

/// The file names that a bare program name stands for, in the order to try.
std::vector<std::wstring> ProgramFileNames(const std::wstring& name);

} // namespace platform
