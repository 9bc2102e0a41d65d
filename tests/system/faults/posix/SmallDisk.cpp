#include "system/faults/posix/SmallDisk.h"

#include <cerrno>
#include <cstring>

#include <sys/mount.h>
#include <unistd.h>

#include "kit/Require.h"
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
    test_support::Require(platform::EnsureDirectory(path), "cannot make the folder for the disk");
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
    test_support::Require(file.CreateNew(Filler(path), L""), "cannot fill the disk");
    constexpr std::size_t page = 4096;
    const std::string content(page, 'x');
    while (file.Write(content)) {
    }
    const bool hasRoom =
        bytes == 0 || truncate((nativePath + "/filler").c_str(), static_cast<off_t>(file.Size() - bytes)) == 0;
    test_support::Require(hasRoom, "cannot leave room on the disk");
}

void SmallDisk::Free() const {
    test_support::Require(platform::RemoveFile(Filler(path)), "cannot free the disk");
}

void SmallDisk::MakeReadOnly() {
    // A second mount on top, because files are open for writing on the first.
    Note("mounting once more", mount(nativePath.c_str(), nativePath.c_str(), nullptr, MS_BIND, nullptr));
    ++mounts;
    Note("mounting for reading", mount("none", nativePath.c_str(), nullptr, MS_REMOUNT | MS_BIND | MS_RDONLY, nullptr));
    test_support::Require(problem.empty(), problem);
}

void SmallDisk::MakeWritable() {
    umount2(nativePath.c_str(), MNT_DETACH);
    --mounts;
}
