#pragma once

#include <functional>

#include <csignal>

namespace platform {

/// Ends all processes below this one by force, however deep and however fast they start others, and reaps them: each is
/// handed to `onReaped`. Returns when none is left but such as the system does not let this user end.
void KillDescendants(const std::function<void(const siginfo_t&)>& onReaped);

/// Reaps the children of this process that have ended; true while there are others.
[[nodiscard]] bool ReapEnded(const std::function<void(const siginfo_t&)>& onReaped);

} // namespace platform
