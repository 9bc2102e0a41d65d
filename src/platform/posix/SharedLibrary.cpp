#include "platform/SharedLibrary.h"

#include <dlfcn.h>

#include "platform/PathRoot.h"
#include "platform/posix/SystemPath.h"

namespace platform {

void* LoadModule(const std::wstring& path) {
    // To dlopen the empty path is the program itself.
    return NamesNothing(path) ? nullptr : dlopen(SystemPath(path).c_str(), RTLD_NOW | RTLD_LOCAL);
}

void* FindExport(void* module, const char* name) {
    return module == nullptr ? nullptr : dlsym(module, name);
}

void FreeModule(void* module) {
    if (module != nullptr) {
        dlclose(module);
    }
}

} // namespace platform
