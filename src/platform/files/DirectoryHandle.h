#pragma once

#include <string>

#include "platform/processes/ProcessHandle.h"
#include "platform/system/Error.h"

namespace platform {

/// Holds one directory fast: what is done below `Path` happens in this very directory, whatever is put in its place, or
/// in the place of a directory above it, meanwhile. Once the directory was removed, nothing can be made there. On
/// Windows nobody can remove or rename it as long as it is held.
class DirectoryHandle {
public:
    /// `NotSupported` for a link.
    Error Open(const std::wstring& path);

    /// Means the directory in this process alone, and only while this object lives.
    const std::wstring& Path() const { return pinnedPath; }

private:
    OwnedHandle directory;
    std::wstring pinnedPath;
};

} // namespace platform
