#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>

#include "platform/files/FileSystem.h"
#include "platform/files/posix/CaseInsensitiveOrder.h"
#include "platform/files/posix/FolderListing.h"
#include "platform/files/posix/SystemPath.h"
#include "text/Text.h"

namespace platform {
namespace {

FolderListing Open(const std::wstring& path) {
    const int descriptor = open(SystemPath(path).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    return FolderListing(descriptor == -1 ? nullptr : fdopendir(descriptor));
}

/// A name with a backslash would be taken apart as a path, and could lead out of the folder.
bool CanBeCarried(std::string_view name) {
    return name != "." && name != ".." && name.find('\\') == std::string_view::npos;
}

/// Most file systems tell the type with the name; only links and what they left open cost another call.
void Append(DIR* folder, const dirent& found, std::vector<FolderEntry>& entries) {
    FolderEntry entry{text::FromUtf8(found.d_name), found.d_type == DT_DIR, found.d_type == DT_LNK};
    struct stat status = {};
    if (found.d_type == DT_UNKNOWN && fstatat(dirfd(folder), found.d_name, &status, AT_SYMLINK_NOFOLLOW) == 0) {
        entry.isLink = S_ISLNK(status.st_mode);
    }
    if ((found.d_type == DT_UNKNOWN || entry.isLink) && fstatat(dirfd(folder), found.d_name, &status, 0) == 0) {
        entry.isFolder = S_ISDIR(status.st_mode);
    }
    entries.push_back(std::move(entry));
}

} // namespace

Error ListFolder(const std::wstring& folder, std::vector<FolderEntry>& entries) {
    const FolderListing opened = Open(folder);
    if (!opened) {
        return LastError();
    }
    std::vector<FolderEntry> found;
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
    std::sort(found.begin(), found.end(), [](const FolderEntry& left, const FolderEntry& right) {
        return CaseInsensitiveLess(left.name, right.name);
    });
    std::move(found.begin(), found.end(), std::back_inserter(entries));
    return {};
}

} // namespace platform
