#include "platform/system/LargePages.h"

namespace platform {

/// Large pages on Windows need a privilege that users do not have.
void PreferLargePages(void*, std::size_t) {}

} // namespace platform
