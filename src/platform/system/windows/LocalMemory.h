#pragma once

#include <memory>

#include <windows.h>

namespace platform {

struct LocalFreer {
    void operator()(void* memory) const { LocalFree(memory); }
};

/// Memory allocated by the system, to be released with LocalFree.
template <typename T>
using LocalMemory = std::unique_ptr<T, LocalFreer>;

} // namespace platform
