#pragma once

#include <climits>
#include <cstdint>

namespace platform {

/// Encodes a descriptor as a handle: its number plus one, so that no handle is null.
inline void* HandleOf(int descriptor) {
    return reinterpret_cast<void*>(static_cast<std::intptr_t>(descriptor) + 1);
}

/// The descriptor in a handle; -1 for null and for values out of range (handles may come from outside, as text).
inline int DescriptorOf(void* handle) {
    const auto number = reinterpret_cast<std::intptr_t>(handle);
    return number > 0 && number <= INT_MAX ? static_cast<int>(number - 1) : -1;
}

} // namespace platform
