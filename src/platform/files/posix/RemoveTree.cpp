#include "platform/files/RemoveTree.h"

#include <cerrno>
#include <string>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "fault_points/FaultPoint.h"
#include "platform/files/NativePath.h"
#include "platform/files/posix/SystemPath.h"
#include "platform/system/posix/Descriptor.h"

namespace platform {
namespace {

constexpr int openDirectoryFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW;

OwnedFileHandle OpenIn(const OwnedFileHandle& directory, const char* name) {
    return OwnedFileHandle(HandleOf(openat(DescriptorOf(directory), name, openDirectoryFlags | O_CLOEXEC)));
}

/// A directory on the path from the root of the tree to the current directory of the removal.
struct Level {
    std::string name;
    dev_t device = 0;
    ino_t inode = 0;
    std::vector<std::string> pendingDirectories;
};

/// Traverses the tree with one open directory at a time, so that depth costs neither descriptors nor stack. Every step
/// uses a descriptor and a single name and follows no link. The step up is verified to lead to the directory from which
/// the step down was made.
class TreeRemoval {
public:
    explicit TreeRemoval(OwnedFileHandle root) : current(std::move(root)) {}

    Error Run() {
        if (!Enter({})) {
            return outcome;
        }
        while (!levels.empty() && Step()) {
        }
        return outcome;
    }

private:
    /// Enters the next subdirectory, or leaves the current directory. False if the way up leads elsewhere.
    bool Step() {
        std::vector<std::string>& pending = levels.back().pendingDirectories;
        if (pending.empty()) {
            return Leave();
        }
        const std::string name = std::move(pending.back());
        pending.pop_back();
        Descend(name);
        return true;
    }

    void Descend(const std::string& name) {
        OwnedFileHandle directory = OpenDirectory(name);
        if (!directory) {
            Note(errno);
            return;
        }
        std::swap(current, directory);
        if (!Enter(name)) {
            std::swap(current, directory);
        }
    }

    /// If the owner has no read permission on the directory, grants it first.
    OwnedFileHandle OpenDirectory(const std::string& name) const {
        OwnedFileHandle directory = OpenIn(current, name.c_str());
        if (!directory && errno == EACCES &&
            fchmodat(DescriptorOf(current), name.c_str(), S_IRWXU, AT_SYMLINK_NOFOLLOW) == 0) {
            directory = OpenIn(current, name.c_str());
        }
        return directory;
    }

    /// Removes the non-directories in the directory, and keeps the list of its subdirectories.
    bool Enter(const std::string& name) {
        struct stat status = {};
        if (fstat(DescriptorOf(current), &status) != 0) {
            return Note(errno);
        }
        if (!levels.empty() && status.st_dev != levels.back().device) {
            return Note(EXDEV);
        }
        if ((status.st_mode & S_IRWXU) != S_IRWXU) {
            (void)fchmod(DescriptorOf(current), S_IRWXU);
        }
        levels.push_back({name, status.st_dev, status.st_ino, {}});
        RemoveFiles(levels.back().pendingDirectories);
        return true;
    }

    void RemoveFiles(std::vector<std::string>& directories) {
        const DirectoryListing listing = OpenListing(DescriptorOf(current), ".", openDirectoryFlags);
        if (!listing) {
            Note(errno);
            return;
        }
        while (const dirent* entry = readdir(listing.get())) {
            const std::string name = entry->d_name;
            if (name != "." && name != "..") {
                RemoveFileOrKeep(name, entry->d_type, directories);
            }
        }
    }

    void RemoveFileOrKeep(const std::string& name, unsigned char type, std::vector<std::string>& directories) {
        if (type == DT_DIR || (type == DT_UNKNOWN && IsRealDirectory(name))) {
            directories.push_back(name);
        } else if (unlinkat(DescriptorOf(current), name.c_str(), 0) != 0) {
            Note(errno);
        } else {
            fault_points::ReachFaultPoint(fault_points::FaultPoint::EntryRemoved);
        }
    }

    bool IsRealDirectory(const std::string& name) const {
        struct stat status = {};
        return fstatat(DescriptorOf(current), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0 &&
               S_ISDIR(status.st_mode);
    }

    bool Leave() {
        const std::string name = std::move(levels.back().name);
        levels.pop_back();
        if (levels.empty()) {
            return true;
        }
        current = OpenIn(current, "..");
        struct stat status = {};
        if (!current || fstat(DescriptorOf(current), &status) != 0) {
            return Note(errno);
        }
        if (status.st_dev != levels.back().device || status.st_ino != levels.back().inode) {
            return Note(ESTALE); // another process has moved the directory
        }
        if (unlinkat(DescriptorOf(current), name.c_str(), AT_REMOVEDIR) != 0) {
            Note(errno);
        }
        return true;
    }

    /// Keeps the first failure. An entry that no longer exists is not a failure. Always returns false.
    bool Note(int code) {
        if (outcome && code != ENOENT) {
            outcome = ErrorFromCode(code);
        }
        return false;
    }

    OwnedFileHandle current;
    std::vector<Level> levels;
    Error outcome;
};

Error OpenError(const std::string& path) {
    const Error error = LastError();
    struct stat status = {};
    const bool isOtherThanDirectory = lstat(path.c_str(), &status) == 0 && !S_ISDIR(status.st_mode);
    return isOtherThanDirectory ? Error{ErrorKind::NotSupported, 0} : error;
}

} // namespace

Error RemoveTree(const std::wstring& path) {
    // A trailing separator would make the system follow a link.
    const std::string root = SystemPath(WithoutTrailingSeparators(path));
    OwnedFileHandle descriptor = OpenDescriptor(root.c_str(), openDirectoryFlags);
    if (!descriptor) {
        return OpenError(root);
    }
    const Error result = TreeRemoval(std::move(descriptor)).Run();
    const bool removed = rmdir(root.c_str()) == 0;
    return !result || removed ? result : LastError();
}

} // namespace platform
