#include "platform/processes/ProgramSearch.h"

#include <sys/stat.h>
#include <unistd.h>

#include "platform/files/posix/SystemPath.h"

namespace platform {

bool IsProgramName(const std::wstring&) {
    return true;
}

bool IsProgramFile(const std::wstring& path) {
    const std::string native = SystemPath(path);
    struct stat status {};
    return stat(native.c_str(), &status) == 0 && S_ISREG(status.st_mode) && access(native.c_str(), X_OK) == 0;
}

std::vector<std::wstring> ProgramFileNames(const std::wstring& name) {
    return {name};
}

} // namespace platform
