#include <utility>

#include <windows.h>

#include "fault_points/FaultPoint.h"
#include "platform/files/FileSystem.h"
#include "platform/files/PathRoot.h"
#include "platform/files/windows/DirectorySearch.h"
#include "platform/files/windows/SystemPath.h"
#include "platform/processes/ProcessHandle.h"

namespace platform {
namespace {

struct Found {
    std::wstring name;
    DWORD attributes = 0;
};

bool IsRealDirectory(DWORD attributes) {
    return (attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT)) == FILE_ATTRIBUTE_DIRECTORY;
}

/// A directory on the way from the root of the tree to where the removal stands.
struct Level {
    /// While it is held so, nobody can rename or remove the directory, nor put a link in its place.
    OwnedHandle held;
    DWORD attributes = 0;
    std::vector<std::wstring> pendingDirectories;
};

/// Holds nothing when `path` is no real directory any more, or is not to be had.
Level Hold(const std::wstring& path) {
    const HANDLE handle =
        CreateFileW(path.c_str(), FILE_LIST_DIRECTORY, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                    FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
    OwnedHandle directory(handle == INVALID_HANDLE_VALUE ? nullptr : handle);
    BY_HANDLE_FILE_INFORMATION information = {};
    if (!directory || GetFileInformationByHandle(handle, &information) == 0) {
        return {};
    }
    if (!IsRealDirectory(information.dwFileAttributes)) {
        SetLastError(ERROR_CANT_ACCESS_FILE);
        return {};
    }
    return {std::move(directory), information.dwFileAttributes, {}};
}

/// Walks the tree with a list of its own instead of the stack. Links and junctions are entries like files.
class TreeRemoval {
public:
    /// `root` as the system takes it, so that nothing on the way down has to be turned again.
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

    /// Empties the current directory but for its directories, which are kept for later.
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

    /// The whole listing first: what is removed meanwhile would shift it.
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

    /// Keeps the first failure. What has gone by itself is none.
    void Note(const Error& error) {
        if (!outcome && error.kind != ErrorKind::NotFound) {
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
