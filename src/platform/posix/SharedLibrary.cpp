#include "platform/SharedLibrary.h"

#include <dlfcn.h>

#include "platform/Directories.h"
#include "platform/NativePath.h"
#include "platform/PathRoot.h"
#include "platform/posix/SystemPath.h"

namespace platform {

void* LoadModule(const std::wstring& path) {
    // To dlopen the empty path is the program itself.
    if (NamesNothing(path)) {
        return nullptr;
    }
    // And a bare name something to search for in LD_LIBRARY_PATH and the system's folders.
    const std::wstring place = FileName(path) == path ? ProgramFolder() + L"\\" + path : path;
    return dlopen(SystemPath(place).c_str(), RTLD_NOW | RTLD_LOCAL);
}

void* FindExport(void* module, const char* name) {
    return module == nullptr ? nullptr : dlsym(module, name);
}

void FreeModule(void* module) {
    if (module != nullptr) {
        dlclose(module);
    }
}

void NarrowModuleSearch() {}

} // namespace platform
