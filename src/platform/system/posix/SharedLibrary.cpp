#include "platform/system/SharedLibrary.h"

#include <set>
#include <utility>

#include <dlfcn.h>

#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "platform/files/posix/SystemPath.h"
#include "platform/system/posix/NeededLibraries.h"
#include "text/Text.h"

namespace platform {
namespace {

bool IsLoaded(const std::string& name) {
    void* const library = dlopen(name.c_str(), RTLD_LAZY | RTLD_NOLOAD);
    FreeModule(library);
    return library != nullptr;
}

/// Loads the libraries that a module needs from the given directories.
class LibraryProvider {
public:
    explicit LibraryProvider(std::vector<std::wstring> searched) : directories(std::move(searched)) {}

    void ProvideFor(const std::wstring& module) {
        for (const std::string& name : NeededLibraries(SystemPath(module))) {
            if (seen.insert(name).second && !IsLoaded(name)) {
                Provide(text::FromUtf8(name));
            }
        }
    }

private:
    void Provide(const std::wstring& name) {
        for (const std::wstring& directory : directories) {
            const std::wstring library = ResolveAgainst(directory, name);
            if (FileName(name) == name && Exists(library)) {
                // The dependencies of a library must be loaded before it.
                ProvideFor(library);
                dlopen(SystemPath(library).c_str(), RTLD_LAZY | RTLD_LOCAL);
                return;
            }
        }
    }

    std::vector<std::wstring> directories;
    std::set<std::string> seen;
};

} // namespace

void* LoadModule(const std::wstring& path) {
    // For dlopen, the empty path means the main program.
    return NamesNothing(path) ? nullptr : dlopen(SystemPath(path).c_str(), RTLD_NOW | RTLD_LOCAL);
}

std::wstring LoadProblem(const std::wstring& path) {
    if (void* const module = LoadModule(path)) {
        FreeModule(module);
        return {};
    }
    const char* const words = NamesNothing(path) ? nullptr : dlerror();
    return words == nullptr ? Error{ErrorKind::NotFound, 0}.Text() : text::FromUtf8(words);
}

void ProvideLibraries(const std::wstring& module, const std::vector<std::wstring>& directories) {
    std::vector<std::wstring> searched{ParentDirectory(module)};
    searched.insert(searched.end(), directories.begin(), directories.end());
    LibraryProvider(std::move(searched)).ProvideFor(module);
}

void* FindExport(void* module, const char* name) {
    return module == nullptr ? nullptr : dlsym(module, name);
}

void FreeModule(void* module) {
    if (module != nullptr) {
        dlclose(module);
    }
}

void HardenLibrarySearch() {}

} // namespace platform
