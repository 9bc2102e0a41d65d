#pragma once

#include <chrono>

namespace controller_cli {

/// Interval for checking the connection: no event reports that a host has disappeared.
inline constexpr std::chrono::milliseconds connectionInterval{500};

} // namespace controller_cli
