#pragma once

#include <string>
#include <string_view>

#include "platform/system/Error.h"

namespace platform {

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

} // namespace platform
