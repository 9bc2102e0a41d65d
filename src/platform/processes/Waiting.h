#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/system/OwnedHandle.h"

/// Waits for several handles at once, without polling.
namespace platform {

/// The processes that one call of `WaitForAny` can wait for, with some handles left for other purposes.
extern const std::int32_t mostWaitedProcesses;

/// Waits until one of `handles` (processes, events, directory watches; not null) is signalled or the timeout expires.
/// Returns the index of the first signalled handle, or nothing on timeout. At most 63 handles on Windows; an invalid
/// one counts as signalled. Without a timeout, waits indefinitely.
std::optional<std::size_t> WaitForAny(const std::vector<void*>& handles,
                                      std::optional<std::chrono::milliseconds> timeout);

/// A flag that one thread raises and others wait for.
class Event {
public:
    /// Throws std::system_error if the system has no handle left.
    Event();
    /// Adopts an event inherited from the parent process. Without a handle, raising does nothing.
    explicit Event(OwnedHandle inherited) : handle(std::move(inherited)) {}
    void* Handle() const { return handle.Get(); }
    /// Stays raised until cleared. Threads: any.
    void Raise();
    void Clear();

private:
    OwnedHandle handle;
};

/// Signalled when an entry is added to, removed from or renamed in a directory (not in its subdirectories). Several
/// changes may be reported as one: the caller calls `Rearm` and then reads the directory itself.
class DirectoryWatch {
public:
    /// Watches `directory`. If the system cannot, `Handle()` is null and the caller must poll.
    explicit DirectoryWatch(const std::wstring& directory);
    ~DirectoryWatch();
    DirectoryWatch(const DirectoryWatch&) = delete;
    DirectoryWatch& operator=(const DirectoryWatch&) = delete;
    void* Handle() const { return handle; }
    /// Waits for the next change.
    void Rearm();

private:
    void* handle = nullptr;
};

} // namespace platform
