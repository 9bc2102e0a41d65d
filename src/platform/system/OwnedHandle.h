#pragma once

#include <cstdint>
#include <utility>

/// Handles of the system, for processes as in the public interface: a `HANDLE` on Windows; on Linux a descriptor (for a
/// process, its pidfd) encoded as a pointer that is never null.
namespace platform {

/// True while the process runs; does not wait. False if it has ended or the handle is invalid. Equivalent to
/// `WaitForSingleObject(handle, 0)` returning `WAIT_TIMEOUT`.
bool IsProcessRunning(void* process);

/// Closes a handle of any kind; on Linux this also reaps a child that has ended. Does nothing for null.
void CloseProcessHandle(void* process);

/// Duplicates a handle of a process or event; the caller closes it. Returns null if `handle` is invalid.
[[nodiscard]] void* CopyHandle(void* handle);

/// Owns one handle: process, event, pipe end, file, directory. Move-only.
class OwnedHandle {
public:
    OwnedHandle() = default;
    explicit OwnedHandle(void* owned) : handle(owned) {}
    ~OwnedHandle() { Reset(); }
    OwnedHandle(OwnedHandle&& other) noexcept : handle(std::exchange(other.handle, nullptr)) {}
    OwnedHandle& operator=(OwnedHandle&& other) noexcept {
        if (this != &other) {
            Reset();
            handle = std::exchange(other.handle, nullptr);
        }
        return *this;
    }

    void* Get() const { return handle; }
    void* Release() { return std::exchange(handle, nullptr); }
    void Reset() { CloseProcessHandle(std::exchange(handle, nullptr)); }
    explicit operator bool() const { return handle != nullptr; }

private:
    void* handle = nullptr;
};

} // namespace platform
