#include "platform/files/FileSystem.h"

#include <windows.h>

#include "platform/files/FileSystemCalls.h"
#include "platform/files/windows/SystemPath.h"

namespace platform {
namespace {

Error OutcomeOf(BOOL succeeded) {
    return succeeded != 0 ? Error{} : LastError();
}

std::uint64_t Joined(DWORD high, DWORD low) {
    return (std::uint64_t{high} << 32) | low;
}

/// Attributes of the file that a path resolves to (follows links). Opens it for attribute access only.
std::optional<BY_HANDLE_FILE_INFORMATION> InformationOf(const std::wstring& path) {
    constexpr DWORD shareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const HANDLE handle = CreateFileW(SystemPath(path).c_str(), FILE_READ_ATTRIBUTES, shareAll, nullptr, OPEN_EXISTING,
                                      FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (handle == INVALID_HANDLE_VALUE) {
        return std::nullopt;
    }
    BY_HANDLE_FILE_INFORMATION information = {};
    const BOOL succeeded = GetFileInformationByHandle(handle, &information);
    CloseHandle(handle);
    return succeeded != 0 ? std::optional(information) : std::nullopt;
}

/// Follows links. Only links are opened, because opening takes much longer.
DWORD AttributesOf(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(SystemPath(path).c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0) {
        return attributes;
    }
    const auto information = InformationOf(path);
    return information ? information->dwFileAttributes : INVALID_FILE_ATTRIBUTES;
}

FileIdentity IdentityFrom(const BY_HANDLE_FILE_INFORMATION& information) {
    return {information.dwVolumeSerialNumber, Joined(information.nFileIndexHigh, information.nFileIndexLow)};
}

Error MoveOnce(const std::wstring& from, const std::wstring& to) {
    return OutcomeOf(MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH));
}

/// Errors that a reader or virus scanner causes while it holds the target open.
bool MayPass(const Error& error) {
    return error.systemCode == ERROR_ACCESS_DENIED || error.systemCode == ERROR_SHARING_VIOLATION;
}

} // namespace

const std::string_view lineEnd = "\r\n";

const char* const randomSource = "default";

bool Exists(const std::wstring& path) {
    return AttributesOf(path) != INVALID_FILE_ATTRIBUTES;
}

bool IsDirectory(const std::wstring& path) {
    const DWORD attributes = AttributesOf(path);
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

bool IsLink(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(SystemPath(path).c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
}

std::optional<FileIdentity> IdentityOf(const std::wstring& path) {
    const auto information = InformationOf(path);
    return information ? std::optional(IdentityFrom(*information)) : std::nullopt;
}

std::optional<FileStamp> StampOf(const std::wstring& path) {
    const auto information = InformationOf(path);
    if (!information) {
        return std::nullopt;
    }
    const FILETIME& lastWrite = information->ftLastWriteTime;
    return FileStamp{IdentityFrom(*information), Joined(information->nFileSizeHigh, information->nFileSizeLow),
                     static_cast<std::int64_t>(Joined(lastWrite.dwHighDateTime, lastWrite.dwLowDateTime))};
}

Error MakeDirectory(const std::wstring& path) {
    return OutcomeOf(CreateDirectoryW(SystemPath(path).c_str(), nullptr));
}

Error MakePrivateDirectory(const std::wstring& path) {
    return MakeDirectory(path);
}

Error RequireOwnDirectory(const std::wstring&) {
    return {};
}

Error LinkFile(const std::wstring& existing, const std::wstring& name) {
    return OutcomeOf(CreateHardLinkW(SystemPath(name).c_str(), SystemPath(existing).c_str(), nullptr));
}

// MOVEFILE_WRITE_THROUGH has already flushed the rename.
Error FlushDirectory(const std::wstring&) {
    return {};
}

Error RenameFile(const std::wstring& from, const std::wstring& to) {
    constexpr int retries = 200;
    const std::wstring source = SystemPath(from);
    const std::wstring target = SystemPath(to);
    Error error = MoveOnce(source, target);
    for (int retry = 0; retry < retries && MayPass(error); ++retry) {
        Sleep(1);
        error = MoveOnce(source, target);
    }
    return error;
}

Error RemoveFile(const std::wstring& path) {
    return OutcomeOf(DeleteFileW(SystemPath(path).c_str()));
}

} // namespace platform
