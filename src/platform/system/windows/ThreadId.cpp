#include "platform/system/ThreadId.h"

#include <windows.h>

namespace platform {

std::uint64_t OwnThreadNumber() {
    return GetCurrentThreadId();
}

} // namespace platform
