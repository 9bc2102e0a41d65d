#pragma once

#include "platform/system/Error.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Files and directories. Paths are library text (either separator); a path with an embedded U+0000 names nothing.
/// All functions may be called from any thread.
namespace platform {

/// True when `path` names a file or directory (links followed, mode 0: existence alone).
bool Exists(const std::wstring& path);

/// True when `path` names a directory (links followed).
bool IsDirectory(const std::wstring& path);

/// True when `path` itself is a symbolic link, junction or other reparse point.
bool IsLink(const std::wstring& path);

/// Makes the directory `path` and its missing parents. Fails with `NotAbsolute` for a relative path, `AlreadyExists`
/// when the name is taken (by a directory too), as the shell's own function on Windows does.
Error CreateNewDirectory(const std::wstring& path);

/// As `CreateNewDirectory`, but an existing directory is success.
Error EnsureDirectory(const std::wstring& path);

/// As `EnsureDirectory`, but what is made is for its owner alone (0700; on Windows what the parent hands down).
Error EnsurePrivateDirectories(const std::wstring& path);

/// As `EnsurePrivateDirectories` for one level. An existing directory keeps its permissions, and is refused with
/// `AccessDenied` when it belongs to somebody else, and with `AlreadyExists` when it is a link.
Error EnsurePrivateDirectory(const std::wstring& path);

struct DirectoryEntry {
    std::wstring name;
    /// Links followed: a link to a directory is a directory.
    bool isDirectory = false;
    /// A symbolic link, junction or other reparse point.
    bool isLink = false;
};

/// Appends the entries of `directory` without "." and "..": in the system's order on Windows, sorted without regard to
/// case on Linux. An entry whose status cannot be read, such as a link to nothing, is no directory. On Linux names with
/// a backslash, which in library text would be paths, are left out. After a failure nothing is appended.
Error ListDirectory(const std::wstring& directory, std::vector<DirectoryEntry>& entries);

/// True when `name` ends in `extension` (".rb") as this system matches file names: without regard to case on Windows,
/// exactly on Linux.
bool HasExtension(const std::wstring& name, const std::wstring& extension);

/// Identifies one directory or file among all of this machine (links followed); nothing when it does not exist.
struct FileIdentity {
    std::uint64_t volume = 0;
    std::uint64_t file = 0;
    bool operator==(const FileIdentity&) const = default;
};
[[nodiscard]] std::optional<FileIdentity> IdentityOf(const std::wstring& path);

/// Tells one state of a file from another: it changes when the file is replaced or written.
struct FileStamp {
    FileIdentity identity;
    std::uint64_t size = 0;
    /// Last write, in the system's own unit (nanoseconds on Linux, 100 ns on Windows).
    std::int64_t lastWrite = 0;
    bool operator==(const FileStamp&) const = default;
};
[[nodiscard]] std::optional<FileStamp> StampOf(const std::wstring& path);

/// Replaces `bytes` by the content of a regular file. More than `limit` bytes: `TooLarge`. A failure leaves `bytes` as
/// it was.
Error ReadFile(const std::wstring& path, std::size_t limit, std::string& bytes);

/// As `ReadFile`, for what is read only once: on Windows a file that others hold open without sharing it (virus
/// scanners and backup programs do, for a moment) is tried 200 times more, 1 ms apart.
Error ReadFileRetrying(const std::wstring& path, std::size_t limit, std::string& bytes);

/// What a replaced file outlives: the end of the process that wrote it, or the end of the whole machine too. The latter
/// waits for the disk.
enum class Durability { Unsynced, Synced };

/// Makes `path` hold exactly `bytes`, all or nothing: a temporary file in the same directory, flushed to the disk where
/// it is to outlive the machine, renamed over the target, which keeps its permissions on Linux; a link at `path` is
/// replaced itself. After a power failure the old or the new content stands there. Missing parent directories are made,
/// for the owner alone. On Windows a target held open by others is tried 200 times more, 1 ms apart. After a failure
/// the old file is untouched and no temporary file is left.
Error ReplaceFile(const std::wstring& path, std::string_view bytes, Durability durability = Durability::Synced);

/// As `ReplaceFile`, and the file that stood there before is kept as `backupPath` (replacing an earlier one), at no
/// moment leaving `path` without a whole file. Without an old file, just `ReplaceFile`.
Error ReplaceFileKeepingBackup(const std::wstring& path, std::string_view bytes, const std::wstring& backupPath);

/// Removes the temporary files beside `path` that processes left which were killed while they replaced that file. Not
/// while another may be replacing it.
void RemoveStaleTemporaries(const std::wstring& path);

/// Creates or truncates a file and leaves it empty. Others may hold it open for reading and writing. A link (a hard one
/// too), pipe or socket at `path` is replaced itself; a directory stays.
Error CreateEmptyFile(const std::wstring& path);

/// The same for the file `name` in `directory`, which must not be a link: else `NotSupported`.
Error CreateEmptyFileIn(const std::wstring& directory, const std::wstring& name);

/// Renames within one volume, replacing the target.
Error RenameFile(const std::wstring& from, const std::wstring& to);

/// Removes one file; a link is removed itself.
Error RemoveFile(const std::wstring& path);

/// Removes a directory with all it holds; links and junctions inside are removed themselves and never followed,
/// read-only entries are removed too. `path` itself must be a real directory: a link or file is refused with
/// `NotSupported`. What cannot be removed is left (on Linux also what another file system holds that is mounted
/// inside), the rest goes on, and the first failure is the result. Any depth.
Error RemoveTree(const std::wstring& path);

} // namespace platform
