#pragma once

#include <string>

/// Checks what other users of this machine could do to a user's files. Administrators are not counted, because nothing
/// stops them. Links are followed; a path that does not exist counts as safe.
namespace platform {

/// True if everyone may write the file or replace it.
bool IsWorldWritable(const std::wstring& file);

/// True if another user could replace this user's files in the directory: it is world-writable without the sticky bit
/// or, on Linux, belongs to a user other than this one and root.
bool IsReplaceableByOthers(const std::wstring& directory);

} // namespace platform
