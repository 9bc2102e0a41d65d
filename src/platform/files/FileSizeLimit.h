#pragma once

namespace platform {

/// Lets a write beyond the user's limit on the size of files ("ulimit -f") fail like one to a full disk; by default the
/// system ends the process there. Processes that this one starts are not affected. On Windows there is no such limit.
void IgnoreFileSizeSignal();

} // namespace platform
