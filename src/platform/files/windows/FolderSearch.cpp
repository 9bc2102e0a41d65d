#include "platform/files/windows/FolderSearch.h"

#include <cwchar>
#include <utility>

#include "platform/files/PathRoot.h"
#include "platform/files/windows/SystemPath.h"

namespace platform {
namespace {

/// An empty folder text must not become the root of the current drive.
std::wstring PatternOf(const std::wstring& folder) {
    if (NamesNothing(folder)) {
        return {};
    }
    return SystemPath(folder + (IsSeparator(folder.back()) ? L"*" : L"\\*"));
}

bool IsDots(const wchar_t* name) {
    return std::wcscmp(name, L".") == 0 || std::wcscmp(name, L"..") == 0;
}

} // namespace

FolderSearch::FolderSearch(const std::wstring& folder)
    : handle(FindFirstFileExW(PatternOf(folder).c_str(), FindExInfoBasic, &entry, FindExSearchNameMatch, nullptr,
                              FIND_FIRST_EX_LARGE_FETCH)) {
    // The root of an empty volume has not even the dots.
    if (handle == INVALID_HANDLE_VALUE && GetLastError() != ERROR_FILE_NOT_FOUND) {
        outcome = LastError();
    }
}

FolderSearch::~FolderSearch() {
    if (handle != INVALID_HANDLE_VALUE) {
        FindClose(handle);
    }
}

bool FolderSearch::Advance() {
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

const WIN32_FIND_DATAW* FolderSearch::Next() {
    while (Advance()) {
        if (!IsDots(entry.cFileName)) {
            return &entry;
        }
    }
    return nullptr;
}

} // namespace platform
