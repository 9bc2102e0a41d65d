#include <windows.h>

#include "platform/files/FileSystem.h"
#include "platform/files/PathRoot.h"
#include "platform/files/windows/DirectorySearch.h"

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

Error ListDirectory(const std::wstring& directory, std::vector<DirectoryEntry>& entries) {
    std::vector<DirectoryEntry> found;
    DirectorySearch search(directory);
    while (const WIN32_FIND_DATAW* const next = search.Next()) {
        Append(directory, *next, found);
    }
    if (search.Outcome()) {
        return search.Outcome();
    }
    entries.insert(entries.end(), found.begin(), found.end());
    return {};
}

} // namespace platform
