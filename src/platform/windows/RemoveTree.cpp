#include <utility>

#include <windows.h>

#include "platform/FaultPoint.h"
#include "platform/FileSystem.h"
#include "platform/PathRoot.h"
#include "platform/windows/FolderSearch.h"
#include "platform/windows/SystemPath.h"

namespace platform {
namespace {

struct Found {
    std::wstring name;
    DWORD attributes = 0;
};

bool IsRealFolder(DWORD attributes) {
    return (attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT)) == FILE_ATTRIBUTE_DIRECTORY;
}

/// Walks the tree with a list of its own instead of the stack. Links and junctions are entries like files.
class TreeRemoval {
public:
    /// `root` as the system takes it, so that nothing on the way down has to be turned again.
    explicit TreeRemoval(const std::wstring& root) : path(root) {}

    Error Run() {
        Enter();
        while (!pending.empty()) {
            Step();
        }
        return outcome;
    }

private:
    void Step() {
        if (pending.back().empty()) {
            Leave();
            return;
        }
        path += L"\\" + pending.back().back();
        pending.back().pop_back();
        Enter();
    }

    /// Empties the current folder but for its folders, which are kept for later.
    void Enter() {
        pending.emplace_back();
        for (const Found& entry : Entries()) {
            if (IsRealFolder(entry.attributes)) {
                pending.back().push_back(entry.name);
            } else {
                Remove(path + L"\\" + entry.name, entry.attributes);
            }
        }
    }

    void Leave() {
        pending.pop_back();
        Remove(path, GetFileAttributesW(path.c_str()));
        path.resize(pending.empty() ? 0 : path.find_last_of(L'\\'));
    }

    /// The whole listing first: what is removed meanwhile would shift it.
    std::vector<Found> Entries() {
        std::vector<Found> entries;
        FolderSearch search(path);
        while (const WIN32_FIND_DATAW* const next = search.Next()) {
            entries.push_back({next->cFileName, next->dwFileAttributes});
        }
        Note(search.Outcome());
        return entries;
    }

    void Remove(const std::wstring& entry, DWORD attributes) {
        if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0) {
            SetFileAttributesW(entry.c_str(), attributes & ~DWORD{FILE_ATTRIBUTE_READONLY});
        }
        const bool isFolder = (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
        if ((isFolder ? RemoveDirectoryW(entry.c_str()) : DeleteFileW(entry.c_str())) == 0) {
            Note(LastError());
        } else {
            ReachFaultPoint(FaultPoint::EntryRemoved);
        }
    }

    /// Keeps the first failure. What has gone by itself is none.
    void Note(const Error& error) {
        if (!outcome && error.kind != ErrorKind::NotFound) {
            outcome = error;
        }
    }

    std::wstring path;
    std::vector<std::vector<std::wstring>> pending;
    Error outcome;
};

} // namespace

Error RemoveTree(const std::wstring& path) {
    const std::wstring root = WithoutTrailingSeparators(LongSystemPath(path));
    const DWORD attributes = GetFileAttributesW(root.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) {
        return LastError();
    }
    return IsRealFolder(attributes) ? TreeRemoval(root).Run() : Error{ErrorKind::NotSupported, 0};
}

} // namespace platform
