#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/processes/ProcessHandle.h"

/// Waiting for several things at once, without looking again and again.
namespace platform {

/// Waits until one of `handles` (processes, events, directory watches; not null) is signalled, or the time is over. The
/// index of the first signalled one; nothing when the time is over. At most 63 handles; one that is not open counts as
/// signalled. No timeout: waits for ever.
std::optional<std::size_t> WaitForAny(const std::vector<void*>& handles,
                                      std::optional<std::chrono::milliseconds> timeout);

/// A flag that one thread raises and others wait for.
class Event {
public:
    /// Throws std::system_error when the system has no handle left.
    Event();
    /// Takes over an event that this process inherited; without a handle, raising does nothing.
    explicit Event(OwnedHandle inherited) : handle(std::move(inherited)) {}
    void* Handle() const { return handle.Get(); }
    /// Stays raised until cleared. Any thread.
    void Raise();
    void Clear();

private:
    OwnedHandle handle;
};

/// Signalled when an entry appears in, leaves or is renamed in a directory (not below it). Changes between two waits
/// may come as one: the caller looks at the directory itself, after `Rearm`.
class DirectoryWatch {
public:
    /// Watches `directory`; when the system cannot, `Handle()` is null and the caller looks by time.
    explicit DirectoryWatch(const std::wstring& directory);
    ~DirectoryWatch();
    DirectoryWatch(const DirectoryWatch&) = delete;
    DirectoryWatch& operator=(const DirectoryWatch&) = delete;
    void* Handle() const { return handle; }
    /// Makes it wait for the next change.
    void Rearm();

private:
    void* handle = nullptr;
};

} // namespace platform
