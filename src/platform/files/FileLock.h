#pragma once

#include "platform/system/Error.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace platform {

/// A lock that the system holds for a process as long as it lives, by a file that is kept open: it cannot be left
/// behind by a process that was killed, whatever the file says. Move-only; released on destruction.
class FileLock {
public:
    FileLock() = default;
    ~FileLock() { Release(); }
    FileLock(FileLock&& other) noexcept;
    FileLock& operator=(FileLock&& other) noexcept;

    /// Takes the lock without waiting; the file is made where it is missing, its directory must exist. `InUse` when
    /// another process (or another `FileLock` of this one) has it.
    Error Take(const std::wstring& path);
    void Release();
    bool IsHeld() const { return handle != invalidHandle; }

    /// Replaces what the file says, for those who meet the lock. Only information: the lock does not depend on it, and
    /// it stays when the process is killed. Fails without the lock.
    Error Write(std::string_view text);
    /// Releases the lock and removes its file. Somebody who waits to take the lock makes a new one.
    void Remove();
    /// True while the lock is held and its path names the locked file. It does not once somebody removed the file or
    /// its directory: then another process can take the same path.
    bool IsInPlace() const;

private:
    static constexpr std::intptr_t invalidHandle = -1;
    std::intptr_t handle = invalidHandle;
    std::wstring place;
};

/// True when some process (this one included) holds the lock of this path at the moment. On Windows a process that
/// takes the lock in the same instant may be told `InUse`.
bool IsLocked(const std::wstring& path);

} // namespace platform
