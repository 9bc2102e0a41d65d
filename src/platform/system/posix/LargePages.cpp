#include "platform/system/LargePages.h"

#include <memory>

#include <sys/mman.h>
#include <unistd.h>

namespace platform {

void PreferLargePages(void* memory, std::size_t size) {
    constexpr std::size_t smallest = std::size_t{32} << 20;
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    if (size >= smallest && std::align(page, page, memory, size) != nullptr) {
        // Refused where large pages are switched off.
        (void)madvise(memory, size / page * page, MADV_HUGEPAGE);
    }
}

} // namespace platform
