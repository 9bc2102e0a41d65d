#include "system/faults/posix/SmallDisk.h"

#include <cerrno>
#include <cstring>
#include <stdexcept>

#include <sys/mount.h>
#include <unistd.h>

#include "platform/files/Directory.h"
#include "platform/files/File.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "text/Text.h"

namespace {

std::wstring Filler(const std::wstring& directory) {
    return directory + L"\\filler";
}

} // namespace

SmallDisk::SmallDisk(const std::wstring& directory)
    : path(directory), nativePath(text::ToUtf8(platform::ToNativeText(directory))) {
    if (!platform::EnsureDirectory(path)) {
        throw std::runtime_error("cannot make the folder for the disk");
    }
    Note("mounting", mount("none", nativePath.c_str(), "tmpfs", 0, "size=1m,mode=0755"));
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
    if (!file.CreateNew(Filler(path), L"")) {
        throw std::runtime_error("cannot fill the disk");
    }
    constexpr std::size_t page = 4096;
    const std::string content(page, 'x');
    while (file.Write(content)) {
    }
    if (bytes != 0 && truncate((nativePath + "/filler").c_str(), static_cast<off_t>(file.Size() - bytes)) != 0) {
        throw std::runtime_error("cannot leave room on the disk");
    }
}

void SmallDisk::Free() const {
    if (!platform::RemoveFile(Filler(path))) {
        throw std::runtime_error("cannot free the disk");
    }
}

void SmallDisk::MakeReadOnly() {
    // A second mount on top, because files are open for writing on the first.
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
