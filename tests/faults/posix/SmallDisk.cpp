#include "SmallDisk.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <stdexcept>

#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

#include "platform/File.h"
#include "platform/FileSystem.h"
#include "platform/NativePath.h"
#include "platform/Text.h"

namespace {

void WriteLine(const char* path, const std::string& line) {
    std::ofstream(path) << line;
}

/// Mounting takes a name space of its own; who may not make one may make one as root of a user name space.
int EnterOwnNameSpace() {
    static const int outcome = [] {
        const std::string user = std::to_string(geteuid());
        const std::string group = std::to_string(getegid());
        if (unshare(CLONE_NEWNS) != 0) {
            if (unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) {
                return -1;
            }
            WriteLine("/proc/self/setgroups", "deny");
            WriteLine("/proc/self/uid_map", user + ' ' + user + " 1");
            WriteLine("/proc/self/gid_map", group + ' ' + group + " 1");
        }
        return mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr);
    }();
    return outcome;
}

std::wstring Filler(const std::wstring& folder) {
    return folder + L"\\filler";
}

} // namespace

SmallDisk::SmallDisk(const std::wstring& folder)
    : path(folder), nativePath(platform::ToUtf8(platform::ToNativeText(folder))) {
    platform::EnsureFolder(path);
    Note("a mount name space", EnterOwnNameSpace());
    Note("mounting", problem.empty() ? mount("none", nativePath.c_str(), "tmpfs", 0, "size=1m,mode=0755") : 0);
    mounts = problem.empty() ? 1 : 0;
}

SmallDisk::~SmallDisk() {
    for (; mounts > 0; --mounts) {
        umount2(nativePath.c_str(), MNT_DETACH);
    }
}

void SmallDisk::Note(const char* step, int result) {
    if (result != 0 && problem.empty()) {
        problem = std::string("this machine does not allow it (") + step + "): " + std::strerror(errno);
    }
}

void SmallDisk::Fill() const {
    FillBut(0);
}

void SmallDisk::FillBut(std::size_t bytes) const {
    platform::File file;
    if (file.CreateNew(Filler(path), L"")) {
        throw std::runtime_error("cannot fill the disk");
    }
    constexpr std::size_t page = 4096;
    const std::string content(page, 'x');
    while (!file.Write(content)) {
    }
    if (bytes != 0 && truncate((nativePath + "/filler").c_str(), static_cast<off_t>(file.Size() - bytes)) != 0) {
        throw std::runtime_error("cannot leave room on the disk");
    }
}

void SmallDisk::Free() const {
    platform::RemoveFile(Filler(path));
}

void SmallDisk::MakeReadOnly() {
    // Over it, because files are open for writing on the mount itself.
    Note("mounting once more", mount(nativePath.c_str(), nativePath.c_str(), nullptr, MS_BIND, nullptr));
    ++mounts;
    Note("mounting for reading", mount("none", nativePath.c_str(), nullptr, MS_REMOUNT | MS_BIND | MS_RDONLY, nullptr));
    if (!problem.empty()) {
        throw std::runtime_error(problem);
    }
}

void SmallDisk::MakeWritable() {
    umount2(nativePath.c_str(), MNT_DETACH);
    --mounts;
}
