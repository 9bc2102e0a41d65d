#include <windows.h>

#include "platform/files/FileSystem.h"
#include "platform/files/PathRoot.h"
#include "platform/files/windows/FolderSearch.h"

namespace platform {
namespace {

/// A link to nothing is no folder; the attributes of every other entry tell the whole.
void Append(const std::wstring& folder, const WIN32_FIND_DATAW& found, std::vector<FolderEntry>& entries) {
    const bool isLink = (found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
    const bool isFolder = (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    const bool leadsSomewhere = !isLink || Exists(folder + L"\\" + found.cFileName);
    entries.push_back({found.cFileName, isFolder && leadsSomewhere, isLink});
}

} // namespace

Error ListFolder(const std::wstring& folder, std::vector<FolderEntry>& entries) {
    std::vector<FolderEntry> found;
    FolderSearch search(folder);
    while (const WIN32_FIND_DATAW* const next = search.Next()) {
        Append(folder, *next, found);
    }
    if (search.Outcome()) {
        return search.Outcome();
    }
    entries.insert(entries.end(), found.begin(), found.end());
    return {};
}

} // namespace platform
