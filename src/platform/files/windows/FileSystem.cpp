#include "platform/files/FileSystem.h"

#include <array>
#include <cstddef>

#include <windows.h>

#include <aclapi.h>

#include "platform/files/NativePath.h"
#include "platform/files/ReplaceFile.h"
#include "platform/files/windows/SystemPath.h"
#include "platform/system/windows/Handle.h"

namespace platform {
namespace {

std::uint64_t Joined(DWORD high, DWORD low) {
    return (std::uint64_t{high} << 32) | low;
}

/// Attributes of the file that a path resolves to (follows links). Opens it for attribute access only.
std::optional<BY_HANDLE_FILE_INFORMATION> InformationOf(const std::wstring& path) {
    constexpr DWORD shareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const OwnedFileHandle handle =
        OpenFileHandle(SystemPath(path), FILE_READ_ATTRIBUTES, shareAll, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS);
    BY_HANDLE_FILE_INFORMATION information = {};
    const bool isKnown = handle && GetFileInformationByHandle(handle.Get(), &information) != 0;
    return isKnown ? std::optional(information) : std::nullopt;
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

constexpr DWORD anyChange = GENERIC_ALL | WRITE_DAC | WRITE_OWNER;
constexpr DWORD changesOfFile = anyChange | GENERIC_WRITE | FILE_WRITE_DATA | FILE_APPEND_DATA;
constexpr DWORD changesOfEntries = anyChange | FILE_DELETE_CHILD;

/// The access rights that one entry of the access list grants to everyone.
DWORD RightsForEverybody(ACL& list, DWORD index, PSID everybody) {
    void* entry = nullptr;
    if (GetAce(&list, index, &entry) == 0) {
        return 0;
    }
    auto* const allowed = static_cast<ACCESS_ALLOWED_ACE*>(entry);
    const bool counts = allowed->Header.AceType == ACCESS_ALLOWED_ACE_TYPE &&
                        (allowed->Header.AceFlags & INHERIT_ONLY_ACE) == 0 &&
                        EqualSid(&allowed->SidStart, everybody) != 0;
    return counts ? allowed->Mask : 0;
}

/// True if the access list grants one of these rights to everyone. A path without an access list counts as open to
/// everyone; one whose list cannot be read is not examined further.
bool GivesEverybody(const std::wstring& path, DWORD rights) {
    PACL list = nullptr;
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    std::wstring name = SystemPath(path);
    if (GetNamedSecurityInfoW(name.data(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr, nullptr, &list, nullptr,
                              &descriptor) != ERROR_SUCCESS) {
        return false;
    }
    const LocalMemory<void> owned(descriptor);
    std::array<std::byte, SECURITY_MAX_SID_SIZE> everybody{};
    DWORD size = SECURITY_MAX_SID_SIZE;
    CreateWellKnownSid(WinWorldSid, nullptr, everybody.data(), &size);
    DWORD given = list == nullptr ? rights : 0;
    for (DWORD index = 0; list != nullptr && index < list->AceCount; ++index) {
        given |= RightsForEverybody(*list, index, everybody.data());
    }
    return (given & rights) != 0;
}

} // namespace

const std::string_view lineEnd = "\r\n";

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

std::int64_t LastWriteTime(const FileStamp& stamp) {
    // Windows counts 100 ns since 1601-01-01.
    constexpr std::int64_t unitsPerSecond = 10'000'000;
    constexpr std::int64_t secondsFrom1601To1970 = 11'644'473'600;
    return stamp.lastWrite / unitsPerSecond - secondsFrom1601To1970;
}

Error LinkFile(const std::wstring& existing, const std::wstring& name) {
    return OutcomeOf(CreateHardLinkW(SystemPath(name).c_str(), SystemPath(existing).c_str(), nullptr));
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

bool IsWorldWritable(const std::wstring& file) {
    return GivesEverybody(file, changesOfFile) || GivesEverybody(ParentDirectory(file), changesOfEntries);
}

bool IsReplaceableByOthers(const std::wstring& directory) {
    return GivesEverybody(directory, changesOfEntries);
}

} // namespace platform
