#include "platform/processes/ProgramSearch.h"

#include "platform/files/FileSystem.h"

namespace platform {

bool IsProgramName(const std::wstring& path) {
    return HasExtension(path, L".exe") || HasExtension(path, L".com");
}

bool IsProgramFile(const std::wstring& path) {
    return IsProgramName(path) && Exists(path) && !IsDirectory(path);
}

std::vector<std::wstring> ProgramFileNames(const std::wstring& name) {
    if (IsProgramName(name)) {
        return {name};
    }
    return {name + L".exe", name + L".com"};
}

} // namespace platform
