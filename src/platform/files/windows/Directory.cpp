#include "platform/files/Directory.h"

#include <windows.h>

#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "platform/files/windows/DirectorySearch.h"
#include "platform/files/windows/SystemPath.h"
#include "platform/system/windows/Handle.h"

namespace platform {
namespace {

/// A dangling link is not a directory. For all other entries the attributes are sufficient.
void Append(const std::wstring& directory, const WIN32_FIND_DATAW& found, std::vector<DirectoryEntry>& entries) {
    const bool isLink = (found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
    const bool isDirectory = (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    const bool leadsSomewhere = !isLink || Exists(directory + L"\\" + found.cFileName);
    entries.push_back({found.cFileName, isDirectory && leadsSomewhere, isLink});
}

} // namespace

Error MakeDirectory(const std::wstring& path) {
    return OutcomeOf(CreateDirectoryW(SystemPath(path).c_str(), nullptr));
}

Error MakePrivateDirectory(const std::wstring& path) {
    return MakeDirectory(path);
}

Error RequireOwnDirectory(const std::wstring&) {
    return {};
}

// MOVEFILE_WRITE_THROUGH has already flushed the rename.
Error FlushDirectory(const std::wstring&) {
    return {};
}

Error ListDirectory(const std::wstring& directory, std::vector<DirectoryEntry>& entries, bool*) {
    std::vector<DirectoryEntry> found;
    DirectorySearch search(directory);
    while (const WIN32_FIND_DATAW* const next = search.Next()) {
        Append(directory, *next, found);
    }
    if (!search.Outcome()) {
        return search.Outcome();
    }
    entries.insert(entries.end(), found.begin(), found.end());
    return {};
}

Error DirectoryHandle::Open(const std::wstring& path) {
    // Without FILE_SHARE_DELETE, which a rename would need, too.
    directory = OpenFileHandle(SystemPath(path), FILE_LIST_DIRECTORY, FILE_SHARE_READ | FILE_SHARE_WRITE, OPEN_EXISTING,
                               FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT);
    if (!directory) {
        return LastError();
    }
    pinnedPath = path;
    return IsDirectory(path) && !IsLink(path) ? Error{} : Error{ErrorKind::NotSupported, 0};
}

} // namespace platform
