#include "platform/files/FileSystem.h"

#include <cstdio>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/files/FileSystemCalls.h"
#include "platform/files/posix/SystemPath.h"
#include "platform/system/posix/Descriptor.h"

namespace platform {
namespace {

std::optional<struct stat> StatusOf(const std::wstring& path) {
    struct stat status = {};
    if (stat(SystemPath(path).c_str(), &status) != 0) {
        return std::nullopt;
    }
    return status;
}

FileIdentity IdentityFrom(const struct stat& status) {
    return {status.st_dev, status.st_ino};
}

std::int64_t Nanoseconds(const timespec& time) {
    return std::int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

} // namespace

const std::string_view lineEnd = "\n";

// The default asks the processor what it supports, which takes long in a virtual machine.
const char* const randomSource = "getentropy";

bool Exists(const std::wstring& path) {
    return access(SystemPath(path).c_str(), F_OK) == 0;
}

bool IsDirectory(const std::wstring& path) {
    const auto status = StatusOf(path);
    return status && S_ISDIR(status->st_mode);
}

bool IsLink(const std::wstring& path) {
    struct stat status = {};
    return lstat(SystemPath(path).c_str(), &status) == 0 && S_ISLNK(status.st_mode);
}

std::optional<FileIdentity> IdentityOf(const std::wstring& path) {
    const auto status = StatusOf(path);
    return status ? std::optional(IdentityFrom(*status)) : std::nullopt;
}

std::optional<FileStamp> StampOf(const std::wstring& path) {
    const auto status = StatusOf(path);
    if (!status) {
        return std::nullopt;
    }
    return FileStamp{IdentityFrom(*status), static_cast<std::uint64_t>(status->st_size), Nanoseconds(status->st_mtim)};
}

Error MakeDirectory(const std::wstring& path) {
    return OutcomeOf(mkdir(SystemPath(path).c_str(), 0777));
}

Error MakePrivateDirectory(const std::wstring& path) {
    return OutcomeOf(mkdir(SystemPath(path).c_str(), 0700));
}

Error RequireOwnDirectory(const std::wstring& path) {
    const auto status = StatusOf(path);
    return status && status->st_uid == geteuid() ? Error{} : Error{ErrorKind::AccessDenied, 0};
}

Error LinkFile(const std::wstring& existing, const std::wstring& name) {
    return OutcomeOf(link(SystemPath(existing).c_str(), SystemPath(name).c_str()));
}

Error FlushDirectory(const std::wstring& directory) {
    const std::string path = directory.empty() ? "." : SystemPath(directory);
    const int descriptor = open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor == -1) {
        return LastError();
    }
    const Error error = OutcomeOf(fsync(descriptor));
    close(descriptor);
    return error;
}

Error RenameFile(const std::wstring& from, const std::wstring& to) {
    return OutcomeOf(rename(SystemPath(from).c_str(), SystemPath(to).c_str()));
}

Error RemoveFile(const std::wstring& path) {
    return OutcomeOf(unlink(SystemPath(path).c_str()));
}

} // namespace platform
