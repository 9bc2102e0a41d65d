#pragma once

#include <string>
#include <vector>

/// Shared libraries loaded at run time. A module handle is the system's own (`HMODULE`, the result of `dlopen`).
namespace platform {

/// Loads a module and adds a reference to it (`LoadLibraryW`, `dlopen`). The system searches for a bare name, and for
/// the libraries that the module needs. Returns null on failure. For a narrower search, pass an absolute path and call
/// `HardenLibrarySearch` before.
[[nodiscard]] void* LoadModule(const std::wstring& path);

/// Why a module cannot be loaded, in the system's words; empty if it can.
[[nodiscard]] std::wstring LoadProblem(const std::wstring& path);

/// Makes the libraries that a module needs available from its own directory and from `directories`, in this order; all
/// paths are absolute. Called before the module is loaded. Libraries that are missing or unusable there are left to the
/// system's search.
///
/// On Windows, these directories are then searched for all modules of a program that has called `HardenLibrarySearch`.
/// On Linux, where a process cannot change its search path, the libraries are loaded at once and stay loaded: the
/// system then resolves the module's needs, which are file names, to them.
void ProvideLibraries(const std::wstring& module, const std::vector<std::wstring>& directories);

/// The address of an export; null if the module has none of this name. A null module has no exports: the system would
/// search the main program instead.
[[nodiscard]] void* FindExport(void* module, const char* name);

/// Releases one reference. Does nothing for a null module.
void FreeModule(void* module);

/// From now on the system searches for libraries only beside the program and in its own directories, not in the current
/// directory or PATH. Linux never searches the current directory. Called first in main().
void HardenLibrarySearch();

} // namespace platform
