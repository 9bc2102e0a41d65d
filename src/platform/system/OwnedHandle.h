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

/// Closes a handle of a file or directory. On Linux, unlike `CloseProcessHandle`, it does not look for a child, which
/// takes a system call. Does nothing for null.
void CloseFileHandle(void* file);

/// Duplicates a handle of a process or event; the caller closes it. Returns null if `handle` is invalid.
[[nodiscard]] void* CopyHandle(void* handle);

/// Owns one handle, which it closes with `Close`. Move-only.
template <void (*Close)(void*)>
class Owned {
public:
    Owned() = default;
    explicit Owned(void* owned) : handle(owned) {}
    ~Owned() { Reset(); }
    Owned(Owned&& other) noexcept : handle(std::exchange(other.handle, nullptr)) {}
    Owned& operator=(Owned&& other) noexcept {
        if (this != &other) {
            Reset();
            handle = std::exchange(other.handle, nullptr);
        }
        return *this;
    }

    void* Get() const { return handle; }
    void* Release() { return std::exchange(handle, nullptr); }
    void Reset() { Close(std::exchange(handle, nullptr)); }
    explicit operator bool() const { return handle != nullptr; }

private:
    void* handle = nullptr;
};

/// Owns a handle of any kind: process, event, pipe end.
using OwnedHandle = Owned<CloseProcessHandle>;

/// Owns the handle of an open file or directory.
using OwnedFileHandle = Owned<CloseFileHandle>;

} // namespace platform
