#pragma once

#include <string>

/// Shared libraries loaded at run time. A module handle is what the system gave (`HMODULE`, the result of `dlopen`).
namespace platform {

/// Loads a module and takes a reference on it; null when it cannot be loaded. There is no search: a bare name stands
/// for the program's folder, any other path for itself. On Windows the libraries that the module needs are looked for
/// beside it, beside the program and among the system's, never in the current folder or PATH.
[[nodiscard]] void* LoadModule(const std::wstring& path);

/// The address of an export, null when the module has none of this name. A null module has no exports: to the system it
/// would mean the main program, whose own would be found.
[[nodiscard]] void* FindExport(void* module, const char* name);

/// Gives one reference back; a null module is nothing to free.
void FreeModule(void* module);

/// From here on the system looks for libraries that anybody asks it for beside the program and among its own, no longer
/// in the current folder and in PATH. Linux never looks in the current folder. Called first of all in a program.
void NarrowModuleSearch();

} // namespace platform
