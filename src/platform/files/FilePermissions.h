#pragma once

#include <string>

/// What other users of this machine could do to a user's files. Administrators can do anything, and do not count. Links
/// are followed; a path that names nothing is safe.
namespace platform {

/// True when everybody may write the file, or put another into its place: what stands in it is anybody's.
bool IsWorldWritable(const std::wstring& file);

/// True when another user could exchange what this one puts into the directory: everybody may write there without being
/// held to his own entries, or, on Linux, it belongs to another user than this one and root.
bool IsReplaceableByOthers(const std::wstring& directory);

} // namespace platform
