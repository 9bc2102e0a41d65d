#pragma once

#include <string>
#include <vector>

/// Shared libraries loaded at run time. A module handle is what the system gave (`HMODULE`, the result of `dlopen`).
namespace platform {

/// Loads a module and takes a reference on it, as the system does (`LoadLibraryW`, `dlopen`): a bare name, and the
/// libraries that the module needs, are looked for where the system looks. Null when it cannot be loaded. A program
/// that wants to look in fewer places hands over an absolute path and calls `HardenLibrarySearch`.
[[nodiscard]] void* LoadModule(const std::wstring& path);

/// Why a module cannot be loaded, in the system's words; empty when it can.
[[nodiscard]] std::wstring LoadProblem(const std::wstring& path);

/// Makes the libraries that a module needs findable beside it and in `directories`, in this order; all paths are
/// absolute. Called before the module is loaded. What is not found or not usable there is left to the system.
///
/// On Windows these directories are searched from then on, in a program that has called `HardenLibrarySearch`, for
/// whatever module. On Linux, where a process cannot change its search, those libraries are loaded at once, for good:
/// the system then takes them for the module's, whose files say by name what they need.
void ProvideLibraries(const std::wstring& module, const std::vector<std::wstring>& directories);

/// The address of an export, null when the module has none of this name. A null module has no exports: to the system it
/// would mean the main program, whose own would be found.
[[nodiscard]] void* FindExport(void* module, const char* name);

/// Gives one reference back; a null module is nothing to free.
void FreeModule(void* module);

/// From here on the system looks for libraries that anybody asks it for beside the program and among its own, no longer
/// in the current directory and in PATH. Linux never looks in the current directory. Called first of all in a program.
void HardenLibrarySearch();

} // namespace platform
