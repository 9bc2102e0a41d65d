#pragma once

#include <cstdint>
#include <string>

/// What the module needs from the system. Paths are in the form that `NativePath` returns.

/// A path of the host, which has backslashes on both systems, as this system writes it.
std::wstring NativePath(std::wstring path);

/// Creates a directory for this user only, and its parents. Returns true also if it exists.
bool MakeDirectory(const std::wstring& path);

/// Starts a program with one argument. The number of the process handle (on Linux the pidfd), or 0 with `problem`.
std::uint64_t StartProgram(const std::wstring& program, const std::wstring& argument, const std::wstring& directory,
                           std::wstring& problem);
