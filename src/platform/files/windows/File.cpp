#include "platform/files/File.h"

#include <algorithm>

#include <windows.h>

#include "platform/files/FileSystem.h"
#include "platform/files/windows/SystemPath.h"
#include "platform/system/windows/Handle.h"

namespace platform {
namespace {

constexpr DWORD shareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr std::size_t largestTransfer = std::size_t{1} << 30;

OwnedFileHandle Open(const std::wstring& path, DWORD access, DWORD disposition, DWORD flags = 0) {
    return OpenFileHandle(SystemPath(path), access, shareAll, disposition, FILE_ATTRIBUTE_NORMAL | flags);
}

bool HasOtherNames(const std::wstring& path) {
    const OwnedFileHandle handle = Open(path, FILE_READ_ATTRIBUTES, OPEN_EXISTING);
    BY_HANDLE_FILE_INFORMATION information = {};
    return handle && GetFileInformationByHandle(handle.Get(), &information) != 0 && information.nNumberOfLinks > 1;
}

DWORD TransferSize(std::size_t size) {
    return static_cast<DWORD>(std::min(size, largestTransfer));
}

} // namespace

Error File::OpenForReading(const std::wstring& path, std::uint64_t* size) {
    Close();
    // FILE_FLAG_BACKUP_SEMANTICS opens directories, too, which distinguishes them from unreadable files.
    handle = Open(path, GENERIC_READ, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS);
    return IsOpen() ? RequireRegular(size) : LastError();
}

Error File::RequireRegular(std::uint64_t* size) {
    BY_HANDLE_FILE_INFORMATION information = {};
    const bool isOnDisk = GetFileType(handle.Get()) == FILE_TYPE_DISK;
    if (isOnDisk && GetFileInformationByHandle(handle.Get(), &information) != 0 &&
        (information.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
        if (size != nullptr) {
            *size = std::uint64_t{information.nFileSizeHigh} << 32 | information.nFileSizeLow;
        }
        return {};
    }
    Close();
    return {ErrorKind::NotSupported, 0};
}

// Pipes do not occur here. CREATE_ALWAYS follows links, so the type is checked before.
Error File::OpenForAppending(const std::wstring& path, bool truncate, AppendTo target) {
    Close();
    if (target == AppendTo::RegularFile && IsLink(path)) {
        return {ErrorKind::NotSupported, 0};
    }
    constexpr DWORD access = FILE_APPEND_DATA | FILE_READ_ATTRIBUTES | SYNCHRONIZE;
    if (target == AppendTo::RegularFile && HasOtherNames(path)) {
        return {ErrorKind::NotSupported, 0};
    }
    handle = Open(path, access, truncate ? CREATE_ALWAYS : OPEN_ALWAYS);
    return IsOpen() ? Error{} : LastError();
}

// A new file inherits the permissions of its directory; `model` is not needed.
Error File::CreateNew(const std::wstring& path, const std::wstring&) {
    Close();
    handle = Open(path, GENERIC_WRITE, CREATE_NEW);
    return IsOpen() ? Error{} : LastError();
}

Error File::Read(char* buffer, std::size_t capacity, std::size_t& count) {
    DWORD done = 0;
    const BOOL succeeded = ::ReadFile(handle.Get(), buffer, TransferSize(capacity), &done, nullptr);
    count = done;
    return succeeded != 0 ? Error{} : LastError();
}

Error File::ReadAt(std::uint64_t offset, char* buffer, std::size_t capacity, std::size_t& count) const {
    OVERLAPPED place = {};
    place.Offset = static_cast<DWORD>(offset & 0xffffffff);
    place.OffsetHigh = static_cast<DWORD>(offset >> 32);
    DWORD done = 0;
    const BOOL succeeded = ::ReadFile(handle.Get(), buffer, TransferSize(capacity), &done, &place);
    count = done;
    return succeeded != 0 || GetLastError() == ERROR_HANDLE_EOF ? Error{} : LastError();
}

Error File::Write(std::string_view bytes) {
    while (!bytes.empty()) {
        DWORD done = 0;
        if (WriteFile(handle.Get(), bytes.data(), TransferSize(bytes.size()), &done, nullptr) == 0) {
            return LastError();
        }
        bytes.remove_prefix(done);
    }
    return {};
}

Error File::Flush() {
    return OutcomeOf(FlushFileBuffers(handle.Get()));
}

std::uint64_t File::Size() const {
    LARGE_INTEGER size = {};
    return IsOpen() && GetFileSizeEx(handle.Get(), &size) != 0 ? static_cast<std::uint64_t>(size.QuadPart) : 0;
}

Error File::MakeExecutable() {
    return {};
}

} // namespace platform
