#include "platform/files/windows/DirectorySearch.h"

#include <cwchar>
#include <utility>

#include "platform/files/NativePath.h"
#include "platform/files/windows/SystemPath.h"

namespace platform {
namespace {

/// An empty directory must not become the root of the current drive.
std::wstring PatternOf(const std::wstring& directory) {
    if (NamesNothing(directory)) {
        return {};
    }
    return SystemPath(directory + (IsSeparator(directory.back()) ? L"*" : L"\\*"));
}

bool IsDots(const wchar_t* name) {
    return std::wcscmp(name, L".") == 0 || std::wcscmp(name, L"..") == 0;
}

} // namespace

DirectorySearch::DirectorySearch(const std::wstring& directory)
    : handle(FindFirstFileExW(PatternOf(directory).c_str(), FindExInfoBasic, &entry, FindExSearchNameMatch, nullptr,
                              FIND_FIRST_EX_LARGE_FETCH)) {
    // The root of an empty volume lacks even "." and "..".
    if (handle == INVALID_HANDLE_VALUE && GetLastError() != ERROR_FILE_NOT_FOUND) {
        outcome = LastError();
    }
}

DirectorySearch::~DirectorySearch() {
    if (handle != INVALID_HANDLE_VALUE) {
        FindClose(handle);
    }
}

bool DirectorySearch::Advance() {
    if (std::exchange(isFirst, false)) {
        return handle != INVALID_HANDLE_VALUE;
    }
    if (FindNextFileW(handle, &entry) != 0) {
        return true;
    }
    if (GetLastError() != ERROR_NO_MORE_FILES) {
        outcome = LastError();
    }
    return false;
}

const WIN32_FIND_DATAW* DirectorySearch::Next() {
    while (Advance()) {
        if (!IsDots(entry.cFileName)) {
            return &entry;
        }
    }
    return nullptr;
}

} // namespace platform
