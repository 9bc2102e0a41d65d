#pragma once

#include <string>
#include <string_view>

#include "platform/system/Error.h"
#include "platform/system/OwnedHandle.h"

namespace platform {

/// A lock on an open file, which the system releases when the process ends, however it ends. The content of the file
/// has no meaning for the lock. Move-only; released on destruction.
class FileLock {
public:
    /// Takes the lock without waiting. Creates the file if it is missing; its directory must exist. Fails with `InUse`
    /// if another process, or another `FileLock` of this process, holds it.
    Error Take(const std::wstring& path);
    void Release() { handle.Reset(); }
    bool IsHeld() const { return static_cast<bool>(handle); }

    /// Replaces the content of the lock file, as information for other processes. The lock does not depend on it, and
    /// it remains if the process is killed. Fails if the lock is not held.
    Error Write(std::string_view text);
    /// Releases the lock and removes its file. The next process that takes the lock creates a new file.
    void Remove();
    /// True while the lock is held and its path still names the locked file. If the file or its directory was removed,
    /// another process can take a lock at the same path.
    bool IsInPlace() const;

private:
    OwnedFileHandle handle;
    std::wstring place;
};

/// True if a process (including this one) holds the lock at this path. On Windows a process that takes the lock at the
/// same instant may get `InUse`.
bool IsLocked(const std::wstring& path);

} // namespace platform
