#pragma once

#include <string>

#include "platform/processes/ProcessHandle.h"
#include "platform/system/Error.h"

namespace platform {

/// Holds one folder fast: what is done below `Path` happens in this very folder, whatever is put in its place, or in
/// the place of a folder above it, meanwhile. Once the folder was removed, nothing can be made there. On Windows nobody
/// can remove or rename it as long as it is held.
class DirectoryHandle {
public:
    /// `NotSupported` for a link.
    Error Open(const std::wstring& path);

    /// Means the folder in this process alone, and only while this object lives.
    const std::wstring& Path() const { return pinnedPath; }

private:
    OwnedHandle folder;
    std::wstring pinnedPath;
};

} // namespace platform
