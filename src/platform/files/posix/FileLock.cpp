#include "platform/files/FileLock.h"

#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/files/posix/SystemPath.h"
#include "platform/system/posix/Descriptor.h"

namespace platform {
namespace {

/// A lock of the open file description, not of the process: closing another descriptor of this process does not release
/// it, and its state can be queried without taking it.
struct flock WholeFile() {
    struct flock whole {};
    whole.l_type = F_WRLCK;
    whole.l_whence = SEEK_SET;
    return whole;
}

/// False if the previous holder removed the file between the open and the lock here.
bool IsNamed(int file, const std::string& path) {
    struct stat opened {};
    struct stat named {};
    return ::fstat(file, &opened) == 0 && ::lstat(path.c_str(), &named) == 0 && opened.st_dev == named.st_dev &&
           opened.st_ino == named.st_ino;
}

Error Lock(int file) {
    struct flock whole = WholeFile();
    if (::fcntl(file, F_OFD_SETLK, &whole) == 0) {
        return {};
    }
    const Error error = LastError();
    const bool isTaken = error.systemCode == EAGAIN || error.systemCode == EACCES;
    return isTaken ? Error{ErrorKind::InUse, error.systemCode} : error;
}

} // namespace

Error FileLock::Take(const std::wstring& path) {
    Release();
    const std::string systemPath = SystemPath(path);
    for (;;) {
        OwnedFileHandle file = OpenDescriptor(systemPath.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW, 0600);
        if (!file) {
            return LastError();
        }
        const Error result = Lock(DescriptorOf(file));
        if (result && IsNamed(DescriptorOf(file), systemPath)) {
            handle = std::move(file);
            place = path;
            return {};
        }
        if (!result) {
            return result;
        }
    }
}

Error FileLock::Write(std::string_view text) {
    const int file = DescriptorOf(handle);
    if (::ftruncate(file, 0) != 0) {
        return LastError();
    }
    const ssize_t written = ::pwrite(file, text.data(), text.size(), 0);
    if (written < 0) {
        return LastError();
    }
    return static_cast<std::size_t>(written) == text.size() ? Error{} : Error{ErrorKind::NoSpace, ENOSPC};
}

/// Removes the file before releasing the lock, because only the holder may remove it.
void FileLock::Remove() {
    if (IsInPlace()) {
        ::unlink(SystemPath(place).c_str());
    }
    Release();
}

bool FileLock::IsInPlace() const {
    return IsHeld() && IsNamed(DescriptorOf(handle), SystemPath(place));
}

bool IsLocked(const std::wstring& path) {
    const OwnedFileHandle file = OpenDescriptor(SystemPath(path).c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK);
    struct flock whole = WholeFile();
    return file && ::fcntl(DescriptorOf(file), F_OFD_GETLK, &whole) == 0 && whole.l_type != F_UNLCK;
}

} // namespace platform
