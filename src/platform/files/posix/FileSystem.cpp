#include "platform/files/FileSystem.h"

#include <cstdio>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/files/NativePath.h"
#include "platform/files/ReplaceFile.h"
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

/// In a sticky directory such as /tmp, users cannot replace files of others.
bool IsOpenToAll(const struct stat& directory) {
    return (directory.st_mode & S_IWOTH) != 0 && (directory.st_mode & S_ISVTX) == 0;
}

bool IsOpenToAll(const std::wstring& directory) {
    const auto status = StatusOf(directory);
    return status && IsOpenToAll(*status);
}

} // namespace

const std::string_view lineEnd = "\n";

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

std::int64_t LastWriteTime(const FileStamp& stamp) {
    return stamp.lastWrite / 1'000'000'000;
}

Error LinkFile(const std::wstring& existing, const std::wstring& name) {
    return OutcomeOf(link(SystemPath(existing).c_str(), SystemPath(name).c_str()));
}

Error RenameFile(const std::wstring& from, const std::wstring& to) {
    return OutcomeOf(rename(SystemPath(from).c_str(), SystemPath(to).c_str()));
}

Error RemoveFile(const std::wstring& path) {
    return OutcomeOf(unlink(SystemPath(path).c_str()));
}

bool IsWorldWritable(const std::wstring& file) {
    const auto status = StatusOf(file);
    return status && ((status->st_mode & S_IWOTH) != 0 || IsOpenToAll(ParentDirectory(file)));
}

bool IsReplaceableByOthers(const std::wstring& directory) {
    const auto status = StatusOf(directory);
    return status && (IsOpenToAll(*status) || (status->st_uid != geteuid() && status->st_uid != 0));
}

} // namespace platform
