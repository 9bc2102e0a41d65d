#pragma once

#include <cstdint>

namespace platform {

/// How many processes one call of `WaitForAny` waits for, with some handles left for other purposes.
extern const std::int32_t mostWaitedProcesses;

} // namespace platform
