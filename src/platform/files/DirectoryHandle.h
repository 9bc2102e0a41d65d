#pragma once

#include <string>

#include "platform/system/Error.h"
#include "platform/system/OwnedHandle.h"

namespace platform {

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
    OwnedHandle directory;
    std::wstring pinnedPath;
};

} // namespace platform
