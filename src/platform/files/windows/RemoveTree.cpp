#include "platform/files/RemoveTree.h"

#include <utility>
#include <vector>

#include <windows.h>

#include "fault_points/FaultPoint.h"
#include "platform/files/NativePath.h"
#include "platform/files/windows/DirectorySearch.h"
#include "platform/files/windows/SystemPath.h"
#include "platform/system/windows/Handle.h"

namespace platform {
namespace {

struct Found {
    std::wstring name;
    DWORD attributes = 0;
};

bool IsRealDirectory(DWORD attributes) {
    return (attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT)) == FILE_ATTRIBUTE_DIRECTORY;
}

/// A directory on the path from the root of the tree to the current directory of the removal.
struct Level {
    /// While this handle is open, nobody can rename or remove the directory or replace it with a link.
    OwnedFileHandle held;
    DWORD attributes = 0;
    std::vector<std::wstring> pendingDirectories;
};

/// Holds nothing if `path` is no longer a real directory or cannot be opened.
Level Hold(const std::wstring& path) {
    OwnedFileHandle directory =
        OpenFileHandle(path, FILE_LIST_DIRECTORY, FILE_SHARE_READ | FILE_SHARE_WRITE, OPEN_EXISTING,
                       FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT);
    BY_HANDLE_FILE_INFORMATION information = {};
    if (!directory || GetFileInformationByHandle(directory.Get(), &information) == 0) {
        return {};
    }
    if (!IsRealDirectory(information.dwFileAttributes)) {
        SetLastError(ERROR_CANT_ACCESS_FILE);
        return {};
    }
    return {std::move(directory), information.dwFileAttributes, {}};
}

/// Traverses the tree with an explicit list instead of recursion. Links and junctions are handled like files.
class TreeRemoval {
public:
    /// `root` is a native path, so that paths below it need no further conversion.
    explicit TreeRemoval(const std::wstring& root) : path(root) {}

    Error Run() {
        Enter();
        while (!levels.empty()) {
            Step();
        }
        return outcome;
    }

private:
    void Step() {
        std::vector<std::wstring>& pending = levels.back().pendingDirectories;
        if (pending.empty()) {
            Leave();
            return;
        }
        path += L"\\" + pending.back();
        pending.pop_back();
        Enter();
    }

    /// Removes the non-directories in the current directory, and keeps the list of its subdirectories.
    void Enter() {
        levels.push_back(Hold(path));
        if (!levels.back().held) {
            Note(LastError());
            return;
        }
        for (const Found& entry : Entries()) {
            if (IsRealDirectory(entry.attributes)) {
                levels.back().pendingDirectories.push_back(entry.name);
            } else {
                Remove(path + L"\\" + entry.name, entry.attributes);
            }
        }
    }

    void Leave() {
        const DWORD attributes = levels.back().attributes;
        const bool wasHeld = static_cast<bool>(levels.back().held);
        levels.pop_back();
        if (wasHeld) {
            Remove(path, attributes);
        }
        path.resize(levels.empty() ? 0 : path.find_last_of(L'\\'));
    }

    /// Reads the whole listing first, because removals during the iteration would shift it.
    std::vector<Found> Entries() {
        std::vector<Found> entries;
        DirectorySearch search(path);
        while (const WIN32_FIND_DATAW* const next = search.Next()) {
            entries.push_back({next->cFileName, next->dwFileAttributes});
        }
        Note(search.Outcome());
        return entries;
    }

    void Remove(const std::wstring& entry, DWORD attributes) {
        if ((attributes & FILE_ATTRIBUTE_READONLY) != 0) {
            SetFileAttributesW(entry.c_str(), attributes & ~DWORD{FILE_ATTRIBUTE_READONLY});
        }
        const bool isDirectory = (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
        if ((isDirectory ? RemoveDirectoryW(entry.c_str()) : DeleteFileW(entry.c_str())) == 0) {
            Note(LastError());
        } else {
            fault_points::ReachFaultPoint(fault_points::FaultPoint::EntryRemoved);
        }
    }

    /// Keeps the first failure. An entry that no longer exists is not a failure.
    void Note(const Error& error) {
        if (outcome && error.kind != ErrorKind::NotFound) {
            outcome = error;
        }
    }

    std::wstring path;
    std::vector<Level> levels;
    Error outcome;
};

} // namespace

Error RemoveTree(const std::wstring& path) {
    const std::wstring root = WithoutTrailingSeparators(LongSystemPath(path));
    const DWORD attributes = GetFileAttributesW(root.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) {
        return LastError();
    }
    return IsRealDirectory(attributes) ? TreeRemoval(root).Run() : Error{ErrorKind::NotSupported, 0};
}

} // namespace platform
