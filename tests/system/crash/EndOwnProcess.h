#pragma once

#include <cstdint>

namespace crash {

/// The exit code of a process ended by `EndOwnProcess`.
inline constexpr std::int32_t killedExitCode = 137;

/// Kills this process at once, without flushing, destructors or messages.
[[noreturn]] void EndOwnProcess();

} // namespace crash
