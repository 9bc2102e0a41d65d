#pragma once

#include <cstddef>
#include <string>

namespace platform {

/// The name of this machine in its network; empty if it has none. Threads: any.
std::wstring MachineName();

/// The name of the account of this process; its number if it has no name. Threads: any.
std::wstring AccountName();

/// Tells the system that `size` bytes at `memory`, allocated and not yet used, will all be written soon, so that it may
/// map them in large pages: a text of hundreds of megabytes otherwise costs tens of thousands of page faults. Only a
/// hint: the content does not change, and a system that cannot follow it ignores it. Memory below 32 MiB is left alone,
/// because the allocator reuses it. Threads: any.
void PreferLargePages(void* memory, std::size_t size);

} // namespace platform
