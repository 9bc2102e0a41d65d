#pragma once

#include <memory>

#include <windows.h>

namespace platform {

struct LocalFreer {
    void operator()(void* memory) const { LocalFree(memory); }
};

/// Memory that the system made and that is given back by LocalFree.
template <typename T>
using LocalMemory = std::unique_ptr<T, LocalFreer>;

} // namespace platform
