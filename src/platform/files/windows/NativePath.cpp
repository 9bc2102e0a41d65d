#include "platform/files/NativePath.h"

#include <algorithm>
#include <cstddef>

#include <windows.h>

namespace platform {
namespace {

bool HasDrive(const std::wstring& path) {
    if (path.size() < 2 || path[1] != L':') {
        return false;
    }
    return (path[0] >= L'A' && path[0] <= L'Z') || (path[0] >= L'a' && path[0] <= L'z');
}

std::size_t ComponentEnd(const std::wstring& path, std::size_t begin) {
    return std::min(path.find_first_of(L"\\/", begin), path.size());
}

/// Length of "\\server\share\"; 1 if the server or share is missing, because "\\" is then a repeated root.
std::size_t ShareRootLength(const std::wstring& path) {
    const std::size_t serverEnd = ComponentEnd(path, 2);
    if (serverEnd == 2 || serverEnd == path.size()) {
        return 1;
    }
    const std::size_t shareEnd = ComponentEnd(path, serverEnd + 1);
    return shareEnd == serverEnd + 1 ? 1 : std::min(shareEnd + 1, path.size());
}

} // namespace

const wchar_t nativeSeparator = L'\\';
const wchar_t pathListSeparator = L';';
const wchar_t* const programExtension = L".exe";
const wchar_t* const moduleExtension = L".dll";

std::size_t RootLength(const std::wstring& path) {
    if (HasDrive(path)) {
        return path.size() > 2 && IsSeparator(path[2]) ? 3 : 0;
    }
    if (path.empty() || !IsSeparator(path[0])) {
        return 0;
    }
    return path.size() > 1 && IsSeparator(path[1]) ? ShareRootLength(path) : 1;
}

// "\x" depends on the current drive, "C:x" on the current directory of that drive.
bool IsAbsolute(const std::wstring& path) {
    return RootLength(path) > 1;
}

std::wstring Rebase(const std::wstring& directory, const std::wstring& path) {
    if (IsAbsolute(path)) {
        return path;
    }
    if (RootLength(path) == 1) {
        return directory.substr(0, RootLength(directory)) + path;
    }
    if (!HasDrive(path)) {
        return directory + L"\\" + path;
    }
    const bool sameDrive = SameName(directory.substr(0, 2), path.substr(0, 2));
    return (sameDrive ? directory : path.substr(0, 2)) + L"\\" + path.substr(2);
}

bool SameName(const std::wstring& left, const std::wstring& right) {
    const int leftLength = static_cast<int>(left.size());
    const int rightLength = static_cast<int>(right.size());
    return CompareStringOrdinal(left.data(), leftLength, right.data(), rightLength, TRUE) == CSTR_EQUAL;
}

} // namespace platform
