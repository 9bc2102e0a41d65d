#pragma once

#include <cstdint>
#include <ctime>

/// The runtime library's conversions, for times that every runtime knows.
namespace platform {

std::tm UtcParts(std::int64_t time);
std::tm LocalParts(std::int64_t time);

/// The time of local parts with daylight saving off; -1 when the runtime cannot tell.
std::int64_t TimeOfLocalParts(std::tm parts);

} // namespace platform
