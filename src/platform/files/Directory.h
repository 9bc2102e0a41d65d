#pragma once

#include <string>
#include <vector>

#include "platform/system/Error.h"
#include "platform/system/OwnedHandle.h"

/// Directories: creation, content and identity. Paths are library text (either separator). Threads: any.
namespace platform {

/// Creates the directory `path` and its missing parents. Fails with `NotAbsolute` for a relative path and with
/// `AlreadyExists` if the name is taken, even by a directory, like the shell function of Windows.
Error CreateNewDirectory(const std::wstring& path);

/// Same as `CreateNewDirectory`, but an existing directory is a success.
Error EnsureDirectory(const std::wstring& path);

/// Same as `EnsureDirectory`, but new directories are accessible to their owner only (0700; on Windows the inherited
/// permissions).
Error EnsurePrivateDirectories(const std::wstring& path);

/// Same as `EnsurePrivateDirectories` for one level. An existing directory keeps its permissions; it is rejected with
/// `AccessDenied` if it belongs to another user, and with `AlreadyExists` if it is a link.
Error EnsurePrivateDirectory(const std::wstring& path);

struct DirectoryEntry {
    std::wstring name;
    /// Follows links: a link to a directory counts as a directory.
    bool isDirectory = false;
    /// A symbolic link, junction or other reparse point.
    bool isLink = false;
};

/// Appends the entries of `directory` without "." and "..": in the system's order on Windows, sorted case-insensitively
/// on Linux. An entry whose status cannot be read, such as a dangling link, does not count as a directory. On Linux,
/// names with a backslash are omitted, because library text would read them as paths; then `isComplete`, if given,
/// becomes false. On failure, appends nothing.
Error ListDirectory(const std::wstring& directory, std::vector<DirectoryEntry>& entries, bool* isComplete = nullptr);

/// Pins one directory. Operations below `Path` act on this directory even if it, or a directory above it, is renamed or
/// replaced. Once the directory is removed, nothing can be created in it. On Windows the directory cannot be removed or
/// renamed while it is pinned.
class DirectoryHandle {
public:
    /// Fails with `NotSupported` for a link.
    Error Open(const std::wstring& path);

    /// Valid in this process only, while this object lives.
    const std::wstring& Path() const { return pinnedPath; }

private:
    OwnedFileHandle directory;
    std::wstring pinnedPath;
};

/// Creates the directory `path` and its missing parents, for the owner only. Existing directories are unchanged.
Error MakeMissingPrivateDirectories(const std::wstring& path);

/// Blocks until the renames in `directory` are on the disk.
Error FlushDirectory(const std::wstring& directory);

// The system calls of the functions above.

/// Creates one directory; its parent must exist. Fails with `AlreadyExists` if the name is taken.
Error MakeDirectory(const std::wstring& path);

/// Same as `MakeDirectory`, for the owner only.
Error MakePrivateDirectory(const std::wstring& path);

/// Succeeds if the existing directory `path` belongs to the user of this process. Always succeeds on Windows, where the
/// inherited permissions control access.
Error RequireOwnDirectory(const std::wstring& path);

} // namespace platform
