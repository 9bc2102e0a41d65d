#include "platform/system/Memory.h"

namespace platform {

/// The system's heap does so by itself.
void TrimHeapEagerly() {}

} // namespace platform
