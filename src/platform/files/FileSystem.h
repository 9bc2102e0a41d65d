#pragma once

#include "platform/system/Error.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

/// Files by their paths. Paths are library text (either separator); a path with an embedded U+0000 names nothing.
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

/// The time of the last write. Units: seconds since 1970-01-01 UTC.
std::int64_t LastWriteTime(const FileStamp& stamp);

// What other users of this machine could do to a user's files. Administrators are not counted, because nothing stops
// them. Links are followed; a path that does not exist counts as safe.

/// True if everyone may write the file or replace it.
bool IsWorldWritable(const std::wstring& file);

/// True if another user could replace this user's files in the directory: it is world-writable without the sticky bit
/// or, on Linux, belongs to a user other than this one and root.
bool IsReplaceableByOthers(const std::wstring& directory);

/// Replaces `bytes` with the content of a regular file. Fails with `TooLarge` above `limit` bytes. On failure, `bytes`
/// is unchanged.
Error ReadFile(const std::wstring& path, std::size_t limit, std::string& bytes);

/// Same as `ReadFile`, for files that are not read again later. On Windows, a file that another process holds open
/// without sharing (virus scanners and backup programs do so briefly) is retried 200 times, 1 ms apart.
Error ReadFileRetrying(const std::wstring& path, std::size_t limit, std::string& bytes);

/// Reads the last `length` bytes of a file, or all of a shorter one. The cost does not depend on the file's size. Bytes
/// that another process appends during the read may be missing. On failure, `bytes` is unchanged.
Error ReadFileEnd(const std::wstring& path, std::size_t length, std::string& bytes);

/// What becomes of the rest of a file after one block.
enum class Reading { GoOn, Stop };

/// Reads a regular file from its beginning and passes it on in blocks of at most 1 MiB, so that the memory does not
/// depend on its size. After `Reading::Stop` the rest is not read, which is no error. Fails with `NotSupported` for
/// anything but a file, with `InUse` if the file changes meanwhile (size or time of the last write).
Error ReadFileInBlocks(const std::wstring& path, const std::function<Reading(std::string_view block)>& visit);

/// Creates an empty file or truncates an existing one. Others may hold it open for reading and writing. A link (also a
/// hard link), pipe or socket at `path` is replaced itself; a directory is not.
Error CreateEmptyFile(const std::wstring& path);

/// Same for the file `name` in `directory`. Fails with `NotSupported` if `directory` is a link.
Error CreateEmptyFileIn(const std::wstring& directory, const std::wstring& name);

/// Renames within one volume, replacing the target.
Error RenameFile(const std::wstring& from, const std::wstring& to);

/// Removes one file. A link is removed itself.
Error RemoveFile(const std::wstring& path);

/// Creates a hard link `name` to the file `existing`. Fails with `NotSupported` or a similar error if the volume has no
/// hard links.
Error LinkFile(const std::wstring& existing, const std::wstring& name);

} // namespace platform
