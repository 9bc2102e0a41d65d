#pragma once

#include <chrono>

namespace controller_cli {

/// No event tells of a host that has gone: so often it is asked for.
inline constexpr std::chrono::milliseconds connectionInterval{500};

} // namespace controller_cli
