#include "platform/system/SharedLibrary.h"

#include <windows.h>

#include "platform/files/NativePath.h"
#include "platform/files/windows/SystemPath.h"
#include "platform/system/Error.h"

// A 16-bit compatibility macro for FreeLibrary.
#undef FreeModule

namespace platform {
namespace {

/// Suppresses the system's message boxes while it exists: a missing library is an error result, not a question to the
/// user.
class QuietErrors {
public:
    QuietErrors() { SetThreadErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX, &previousMode); }
    ~QuietErrors() { SetThreadErrorMode(previousMode, nullptr); }
    QuietErrors(const QuietErrors&) = delete;
    QuietErrors& operator=(const QuietErrors&) = delete;

private:
    DWORD previousMode = 0;
};

} // namespace

void* LoadModule(const std::wstring& path) {
    const QuietErrors quiet;
    return NamesNothing(path) ? nullptr : LoadLibraryW(SystemPath(path).c_str());
}

std::wstring LoadProblem(const std::wstring& path) {
    const QuietErrors quiet;
    const HMODULE module = NamesNothing(path) ? nullptr : LoadLibraryW(SystemPath(path).c_str());
    if (module == nullptr) {
        const Error error = NamesNothing(path) ? Error{ErrorKind::NotFound, 0} : LastError();
        return error.Text();
    }
    FreeLibrary(module);
    return {};
}

void ProvideLibraries(const std::wstring& module, const std::vector<std::wstring>& directories) {
    AddDllDirectory(SystemPath(ParentDirectory(module)).c_str());
    for (const std::wstring& directory : directories) {
        AddDllDirectory(SystemPath(directory).c_str());
    }
}

void* FindExport(void* module, const char* name) {
    if (module == nullptr) {
        return nullptr;
    }
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(module), name));
}

void FreeModule(void* module) {
    if (module != nullptr) {
        FreeLibrary(static_cast<HMODULE>(module));
    }
}

void HardenLibrarySearch() {
    SetDefaultDllDirectories(LOAD_LIBRARY_SEARCH_DEFAULT_DIRS);
}

} // namespace platform
