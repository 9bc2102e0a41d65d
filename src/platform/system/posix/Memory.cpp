#include "platform/system/Memory.h"

#include <malloc.h>

namespace platform {

/// Of itself the C library learns from each large block that is freed to keep the next one as large, and puts small
/// ones behind it that then hold it fast.
void TrimHeapEagerly() {
    constexpr int large = 128 * 1024;
    mallopt(M_MMAP_THRESHOLD, large);
    mallopt(M_TRIM_THRESHOLD, large);
}

} // namespace platform
