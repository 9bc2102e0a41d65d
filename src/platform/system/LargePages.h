#pragma once

#include <cstddef>

namespace platform {

/// Tells the system that `size` bytes at `memory`, allocated and not yet used, will all be written soon, so that it may
/// map them in large pages: a text of hundreds of megabytes otherwise costs tens of thousands of page faults. Only a
/// hint: the content does not change, and a system that cannot follow it ignores it. Memory below 32 MiB is left alone,
/// because the allocator reuses it. Threads: any.
void PreferLargePages(void* memory, std::size_t size);

} // namespace platform
