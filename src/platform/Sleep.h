#pragma once

#include <chrono>

namespace platform {

/// Holds up the calling thread for this long. Stands alone in its source file, so that a test program can bring a
/// clock of its own that it turns by hand.
void SleepFor(std::chrono::milliseconds duration);

} // namespace platform
