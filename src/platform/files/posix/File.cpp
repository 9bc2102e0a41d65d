#include "platform/files/File.h"

#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/files/posix/SystemPath.h"
#include "platform/system/posix/Descriptor.h"

namespace platform {
namespace {

constexpr mode_t permissionBits = 0777;

OwnedFileHandle Open(const std::wstring& path, int flags, mode_t mode = 0666) {
    return OpenDescriptor(SystemPath(path).c_str(), flags | O_NOCTTY, mode);
}

/// O_NONBLOCK: opening a named pipe would wait for a reader. No effect on files.
int FlagsFor(AppendTo target) {
    switch (target) {
    case AppendTo::Anything:
        return 0;
    case AppendTo::FileOrDevice:
        return O_NONBLOCK;
    case AppendTo::RegularFile:
        break;
    }
    return O_NONBLOCK | O_NOFOLLOW;
}

bool IsAmong(AppendTo target, int descriptor) {
    struct stat status = {};
    if (target == AppendTo::Anything) {
        return true;
    }
    if (fstat(descriptor, &status) != 0) {
        return false;
    }
    return target == AppendTo::RegularFile ? S_ISREG(status.st_mode) && status.st_nlink <= 1
                                           : S_ISREG(status.st_mode) || S_ISCHR(status.st_mode);
}

} // namespace

Error File::OpenForReading(const std::wstring& path, std::uint64_t* size) {
    Close();
    // O_NONBLOCK: opening a named pipe would wait for a writer.
    handle = Open(path, O_RDONLY | O_NONBLOCK);
    return IsOpen() ? RequireRegular(size) : LastError();
}

Error File::RequireRegular(std::uint64_t* size) {
    struct stat status = {};
    if (fstat(DescriptorOf(handle), &status) == 0 && S_ISREG(status.st_mode)) {
        if (size != nullptr) {
            *size = static_cast<std::uint64_t>(status.st_size);
        }
        return {};
    }
    Close();
    return {ErrorKind::NotSupported, 0};
}

Error File::OpenForAppending(const std::wstring& path, bool truncate, AppendTo target) {
    Close();
    handle = Open(path, O_WRONLY | O_APPEND | O_CREAT | FlagsFor(target));
    if (!IsOpen()) {
        // ELOOP: a link that is not followed. ENXIO: a named pipe without a reader.
        return errno == ELOOP || errno == ENXIO ? Error{ErrorKind::NotSupported, errno} : LastError();
    }
    if (!IsAmong(target, DescriptorOf(handle))) {
        Close();
        return {ErrorKind::NotSupported, 0};
    }
    // Truncates only after the type check (no O_TRUNC). EINVAL: a device cannot be truncated.
    return truncate && ftruncate(DescriptorOf(handle), 0) == -1 && errno != EINVAL ? LastError() : Error{};
}

Error File::CreateNew(const std::wstring& path, const std::wstring& model) {
    Close();
    struct stat modelStatus = {};
    const bool hasModel = stat(SystemPath(model).c_str(), &modelStatus) == 0;
    const mode_t mode = hasModel ? modelStatus.st_mode & permissionBits : 0666;
    handle = Open(path, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW, mode);
    if (!IsOpen()) {
        return LastError();
    }
    if (hasModel) {
        // Restores the bits that the umask removed. Fails on file systems without permissions, where it does not
        // matter.
        (void)fchmod(DescriptorOf(handle), mode);
    }
    return {};
}

Error File::Read(char* buffer, std::size_t capacity, std::size_t& count) {
    ssize_t result = 0;
    do {
        result = read(DescriptorOf(handle), buffer, capacity);
    } while (result == -1 && errno == EINTR);
    count = static_cast<std::size_t>(std::max<ssize_t>(result, 0));
    return result == -1 ? LastError() : Error{};
}

Error File::ReadAt(std::uint64_t offset, char* buffer, std::size_t capacity, std::size_t& count) const {
    ssize_t result = 0;
    do {
        result = pread(DescriptorOf(handle), buffer, capacity, static_cast<off_t>(offset));
    } while (result == -1 && errno == EINTR);
    count = static_cast<std::size_t>(std::max<ssize_t>(result, 0));
    return result == -1 ? LastError() : Error{};
}

Error File::Write(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t result = write(DescriptorOf(handle), bytes.data(), bytes.size());
        if (result == -1 && errno != EINTR) {
            return LastError();
        }
        bytes.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(result, 0)));
    }
    return {};
}

Error File::Flush() {
    return OutcomeOf(fdatasync(DescriptorOf(handle)));
}

std::uint64_t File::Size() const {
    struct stat status = {};
    return IsOpen() && fstat(DescriptorOf(handle), &status) == 0 ? static_cast<std::uint64_t>(status.st_size) : 0;
}

Error File::MakeExecutable() {
    struct stat status = {};
    if (fstat(DescriptorOf(handle), &status) == -1) {
        return LastError();
    }
    const mode_t executable = (status.st_mode & (S_IRUSR | S_IRGRP | S_IROTH)) >> 2;
    return OutcomeOf(fchmod(DescriptorOf(handle), (status.st_mode & permissionBits) | executable));
}

} // namespace platform
