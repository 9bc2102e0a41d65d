#include "platform/system/ThreadId.h"

#include <unistd.h>

namespace platform {

std::uint64_t OwnThreadNumber() {
    return static_cast<std::uint64_t>(gettid());
}

} // namespace platform
