#include "platform/files/FilePermissions.h"

#include <sys/stat.h>
#include <unistd.h>

#include "platform/files/NativePath.h"
#include "platform/files/posix/SystemPath.h"

namespace platform {
namespace {

bool ReadStatus(const std::wstring& path, struct stat& status) {
    return stat(SystemPath(path).c_str(), &status) == 0;
}

/// In a sticky directory such as /tmp, users cannot replace files of others.
bool IsOpenToAll(const struct stat& directory) {
    return (directory.st_mode & S_IWOTH) != 0 && (directory.st_mode & S_ISVTX) == 0;
}

bool IsOpenToAll(const std::wstring& directory) {
    struct stat status = {};
    return ReadStatus(directory, status) && IsOpenToAll(status);
}

} // namespace

bool IsWorldWritable(const std::wstring& file) {
    struct stat status = {};
    return ReadStatus(file, status) && ((status.st_mode & S_IWOTH) != 0 || IsOpenToAll(ParentDirectory(file)));
}

bool IsReplaceableByOthers(const std::wstring& directory) {
    struct stat status = {};
    return ReadStatus(directory, status) && (IsOpenToAll(status) || (status.st_uid != geteuid() && status.st_uid != 0));
}

} // namespace platform
