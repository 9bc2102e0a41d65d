#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>

#include "platform/files/FileSystem.h"
#include "platform/files/posix/CaseInsensitiveOrder.h"
#include "platform/files/posix/SystemPath.h"
#include "platform/system/posix/Descriptor.h"
#include "text/Text.h"

namespace platform {
namespace {

DirectoryListing Open(const std::wstring& path) {
    const int descriptor = open(SystemPath(path).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    return DirectoryListing(descriptor == -1 ? nullptr : fdopendir(descriptor));
}

/// A name with a backslash would be split like a path and could lead out of the directory.
bool CanBeCarried(std::string_view name) {
    return name != "." && name != ".." && name.find('\\') == std::string_view::npos;
}

/// Most file systems return the type with the name; only links and unknown types need another call.
void Append(DIR* directory, const dirent& found, std::vector<DirectoryEntry>& entries) {
    DirectoryEntry entry{text::FromUtf8(found.d_name), found.d_type == DT_DIR, found.d_type == DT_LNK};
    struct stat status = {};
    if (found.d_type == DT_UNKNOWN && fstatat(dirfd(directory), found.d_name, &status, AT_SYMLINK_NOFOLLOW) == 0) {
        entry.isLink = S_ISLNK(status.st_mode);
    }
    if ((found.d_type == DT_UNKNOWN || entry.isLink) && fstatat(dirfd(directory), found.d_name, &status, 0) == 0) {
        entry.isDirectory = S_ISDIR(status.st_mode);
    }
    entries.push_back(std::move(entry));
}

} // namespace

Error ListDirectory(const std::wstring& directory, std::vector<DirectoryEntry>& entries) {
    const DirectoryListing opened = Open(directory);
    if (!opened) {
        return LastError();
    }
    std::vector<DirectoryEntry> found;
    errno = 0;
    while (const dirent* next = readdir(opened.get())) {
        if (CanBeCarried(next->d_name)) {
            Append(opened.get(), *next, found);
        }
        errno = 0;
    }
    if (errno != 0) {
        return LastError();
    }
    std::sort(found.begin(), found.end(), [](const DirectoryEntry& left, const DirectoryEntry& right) {
        return CaseInsensitiveLess(left.name, right.name);
    });
    std::move(found.begin(), found.end(), std::back_inserter(entries));
    return {};
}

} // namespace platform
