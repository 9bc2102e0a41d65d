#pragma once

#include <cstdint>
#include <utility>

/// Process handles as the public interface carries them: a `HANDLE` on Windows; on Linux a pidfd in the place of one,
/// never null.
namespace platform {

/// True while the process runs: a look without waiting (`WaitForSingleObject(handle, 0)` gives `WAIT_TIMEOUT`). False
/// when it has ended or the handle is not one.
bool IsProcessRunning(void* process);

/// Closes a handle; on Linux a child that has ended is reaped with it. Null is nothing to close.
void CloseProcessHandle(void* process);

/// A second handle to the same process or event, to be closed by itself; null when `handle` is not one.
[[nodiscard]] void* CopyHandle(void* handle);

/// Owns one handle that can be waited for (process, event, directory watch). Move-only.
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
