#pragma once

#include <cstdint>

namespace crash {

/// The exit code of a process that was ended so.
inline constexpr std::int32_t killedExitCode = 137;

/// Ends this process at once, by force: nothing is flushed, destroyed or told.
[[noreturn]] void EndOwnProcess();

} // namespace crash
