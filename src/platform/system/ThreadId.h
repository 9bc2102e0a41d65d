#pragma once

#include <cstdint>

namespace platform {

/// The system's number of the calling thread, for log records.
std::uint64_t OwnThreadNumber();

} // namespace platform
