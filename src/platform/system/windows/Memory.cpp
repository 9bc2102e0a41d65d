#include "platform/system/Memory.h"

namespace platform {

/// The heap of Windows already returns large blocks.
void TrimHeapEagerly() {}

} // namespace platform
