#include "platform/SharedLibrary.h"

#include <windows.h>

#include "platform/Directories.h"
#include "platform/NativePath.h"
#include "platform/PathRoot.h"
#include "platform/windows/SystemPath.h"

// An alias of FreeLibrary since the days of 16 bits.
#undef FreeModule

namespace platform {
namespace {

/// No message box of the system while it lives: a missing library is an answer, not a question to the user.
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
    if (NamesNothing(path)) {
        return nullptr;
    }
    const QuietErrors quiet;
    const bool isBareName = FileName(path) == path;
    // These places for what the module needs can only be named with a whole path.
    const std::wstring whole = ResolveAgainst(isBareName ? ProgramFolder() : CurrentFolder(), path);
    constexpr DWORD searched = LOAD_LIBRARY_SEARCH_DLL_LOAD_DIR | LOAD_LIBRARY_SEARCH_DEFAULT_DIRS;
    return LoadLibraryExW(SystemPath(whole).c_str(), nullptr, searched);
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

void NarrowModuleSearch() {
    SetDefaultDllDirectories(LOAD_LIBRARY_SEARCH_DEFAULT_DIRS);
}

} // namespace platform
