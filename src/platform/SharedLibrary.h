#pragma once

#include <string>

/// Shared libraries loaded at run time. A module handle is what the system gave (`HMODULE`, the result of `dlopen`).
namespace platform {

/// Loads a module and takes a reference on it; null when it cannot be loaded. `path` as `LoadLibraryW` takes it.
void* LoadModule(const std::wstring& path);

/// The address of an export, null when the module has none of this name. A null module has no exports: to the system it
/// would mean the main program, whose own would be found.
void* FindExport(void* module, const char* name);

/// Gives one reference back; a null module is nothing to free.
void FreeModule(void* module);

} // namespace platform
