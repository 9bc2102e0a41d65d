#pragma once

#include "platform/Error.h"

#include <cstdint>
#include <string>

namespace platform {

/// A lock that the system holds for a process as long as it lives, by a file that is kept open: it cannot be left
/// behind by a process that was killed, whatever the file says. Move-only; released on destruction.
class FileLock {
public:
    FileLock() = default;
    ~FileLock() { Release(); }
    FileLock(FileLock&& other) noexcept;
    FileLock& operator=(FileLock&& other) noexcept;

    /// Takes the lock without waiting; the file is made where it is missing, its folder must exist. `InUse` when
    /// another process (or another `FileLock` of this one) has it.
    Error Take(const std::wstring& path);
    void Release();
    bool IsHeld() const { return handle != invalidHandle; }

private:
    static constexpr std::intptr_t invalidHandle = -1;
    std::intptr_t handle = invalidHandle;
};

} // namespace platform
