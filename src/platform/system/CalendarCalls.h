#pragma once

#include <cstdint>
#include <ctime>

/// Calendar conversions of the C runtime, for times that both runtimes support.
namespace platform {

std::tm UtcParts(std::int64_t time);
std::tm LocalParts(std::int64_t time);

/// Converts local fields with daylight saving off; -1 on failure.
std::int64_t TimeOfLocalParts(std::tm parts);

} // namespace platform
