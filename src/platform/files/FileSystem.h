#pragma once

#include "platform/system/Error.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Files and directories. Paths are library text (either separator); a path with an embedded U+0000 names nothing.
/// Threads: any.
namespace platform {

/// The line end of text files on this system: "\n" on Linux, "\r\n" on Windows.
extern const std::string_view lineEnd;

/// True if `path` names a file or directory (follows links; access mode 0 checks existence only).
bool Exists(const std::wstring& path);

/// True if `path` names a directory (follows links).
bool IsDirectory(const std::wstring& path);

/// True if `path` itself is a symbolic link, junction or other reparse point.
bool IsLink(const std::wstring& path);

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
/// names with a backslash are omitted, because library text would read them as paths. On failure, appends nothing.
Error ListDirectory(const std::wstring& directory, std::vector<DirectoryEntry>& entries);

/// True if `name` has the extension `extension` (".rb"): case-insensitive on Windows, exact on Linux.
bool HasExtension(const std::wstring& name, const std::wstring& extension);

/// Identifies a directory or file on this machine (follows links); nothing if it does not exist.
struct FileIdentity {
    std::uint64_t volume = 0;
    std::uint64_t file = 0;
    bool operator==(const FileIdentity&) const = default;
};
[[nodiscard]] std::optional<FileIdentity> IdentityOf(const std::wstring& path);

/// Identifies the state of a file: it changes when the file is replaced or written.
struct FileStamp {
    FileIdentity identity;
    std::uint64_t size = 0;
    /// Last write time, in the system's unit (nanoseconds on Linux, 100 ns on Windows).
    std::int64_t lastWrite = 0;
    bool operator==(const FileStamp&) const = default;
};
[[nodiscard]] std::optional<FileStamp> StampOf(const std::wstring& path);

/// Replaces `bytes` with the content of a regular file. Fails with `TooLarge` above `limit` bytes. On failure, `bytes`
/// is unchanged.
Error ReadFile(const std::wstring& path, std::size_t limit, std::string& bytes);

/// Same as `ReadFile`, for files that are not read again later. On Windows, a file that another process holds open
/// without sharing (virus scanners and backup programs do so briefly) is retried 200 times, 1 ms apart.
Error ReadFileRetrying(const std::wstring& path, std::size_t limit, std::string& bytes);

/// What a replaced file survives: the end of the writing process, or also a power failure. The latter waits for the
/// disk.
enum class Durability { Unsynced, Synced };

/// Replaces the content of `path` with `bytes` atomically: writes a temporary file in the same directory, flushes it if
/// `durability` is `Synced`, and renames it over the target. The target keeps its permissions on Linux; a link at
/// `path` is replaced itself. After a power failure the file has either the old or the new content. Missing parent
/// directories are created for the owner only. On Windows, a target held open by others is retried 200 times, 1 ms
/// apart. On failure, the old file is unchanged and no temporary file is left.
Error ReplaceFile(const std::wstring& path, std::string_view bytes, Durability durability = Durability::Synced);

/// Same as `ReplaceFile`, and keeps the previous file as `backupPath`, replacing an earlier backup. `path` names a
/// complete file at every moment. Without a previous file, same as `ReplaceFile`.
Error ReplaceFileKeepingBackup(const std::wstring& path, std::string_view bytes, const std::wstring& backupPath);

/// Removes the temporary files beside `path` that killed processes left while replacing it. Must not run while another
/// process may be replacing the file.
void RemoveStaleTemporaries(const std::wstring& path);

/// Creates an empty file or truncates an existing one. Others may hold it open for reading and writing. A link (also a
/// hard link), pipe or socket at `path` is replaced itself; a directory is not.
Error CreateEmptyFile(const std::wstring& path);

/// Same for the file `name` in `directory`. Fails with `NotSupported` if `directory` is a link.
Error CreateEmptyFileIn(const std::wstring& directory, const std::wstring& name);

/// Renames within one volume, replacing the target.
Error RenameFile(const std::wstring& from, const std::wstring& to);

/// Removes one file. A link is removed itself.
Error RemoveFile(const std::wstring& path);

/// Removes a directory with its content, of any depth. Links and junctions inside are removed and never followed;
/// read-only entries are removed, too. Fails with `NotSupported` if `path` itself is a link or file. Entries that
/// cannot be removed are left (on Linux also those of file systems mounted inside); the removal continues, and the
/// first failure is returned.
Error RemoveTree(const std::wstring& path);

} // namespace platform
