#include "platform/system/Memory.h"

#include <malloc.h>

namespace platform {

/// glibc raises its mmap threshold with each large block that is freed; later blocks of that size then stay in the
/// heap, pinned by small allocations behind them. A fixed threshold prevents this.
void TrimHeapEagerly() {
    constexpr int large = 128 * 1024;
    mallopt(M_MMAP_THRESHOLD, large);
    mallopt(M_TRIM_THRESHOLD, large);
}

} // namespace platform
