#pragma once

#include <chrono>

namespace front_end {

/// Interval for checking the connection: no event reports that a host has disappeared.
inline constexpr std::chrono::milliseconds connectionInterval{500};

} // namespace front_end
