#pragma once

#include <climits>
#include <cstdint>
#include <memory>

#include <dirent.h>
#include <fcntl.h>

#include "platform/system/Error.h"
#include "platform/system/OwnedHandle.h"

/// Descriptors of this system, and the results of calls with them.
namespace platform {

/// Encodes a descriptor as a handle: its number plus one, so that no handle is null. Null for -1, the result of a
/// failed call.
inline void* HandleOf(int descriptor) {
    return reinterpret_cast<void*>(static_cast<std::intptr_t>(descriptor) + 1);
}

/// The descriptor in a handle; -1 for null and for values out of range (handles may come from outside, as text).
inline int DescriptorOf(void* handle) {
    const auto number = reinterpret_cast<std::intptr_t>(handle);
    return number > 0 && number <= INT_MAX ? static_cast<int>(number - 1) : -1;
}

template <void (*Close)(void*)>
int DescriptorOf(const Owned<Close>& handle) {
    return DescriptorOf(handle.Get());
}

/// Opens a file or directory (`open`), closed in child processes; null on failure.
inline OwnedFileHandle OpenDescriptor(const char* systemPath, int flags, mode_t mode = 0) {
    return OwnedFileHandle(HandleOf(open(systemPath, flags | O_CLOEXEC, mode)));
}

struct DirectoryCloser {
    void operator()(DIR* directory) const { closedir(directory); }
};

/// An open directory stream.
using DirectoryListing = std::unique_ptr<DIR, DirectoryCloser>;

/// Opens a directory (`openat`) to read its entries; null on failure.
inline DirectoryListing OpenListing(int directory, const char* name, int flags) {
    const int descriptor = openat(directory, name, flags | O_CLOEXEC);
    return DirectoryListing(descriptor == -1 ? nullptr : fdopendir(descriptor));
}

/// The error of a system call that returns -1 on failure.
inline Error OutcomeOf(int result) {
    return result == -1 ? LastError() : Error{};
}

} // namespace platform
