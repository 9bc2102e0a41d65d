#pragma once

#include <cstdint>

#include "platform/ProcessHandle.h"

namespace test_support {

/// A handle to a process that somebody else started; null when there is none of this number (any more).
platform::OwnedHandle OpenProcessByNumber(std::uint32_t number);

/// Ends one process by force, and nothing that it started.
void KillProcess(void* process);

} // namespace test_support
