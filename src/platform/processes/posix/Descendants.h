#pragma once

#include <functional>

#include <csignal>

namespace platform {

/// Kills and reaps all descendants of this process, however deep and however fast they fork. Passes each one to
/// `onReaped`. Returns when none is left, apart from those that this user may not kill.
void KillDescendants(const std::function<void(const siginfo_t&)>& onReaped);

/// Reaps the children of this process that have ended; true while others remain.
[[nodiscard]] bool ReapEnded(const std::function<void(const siginfo_t&)>& onReaped);

} // namespace platform
