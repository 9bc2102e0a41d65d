#pragma once

namespace platform {

/// Makes a write beyond the file size limit ("ulimit -f") fail like a write to a full disk; by default the signal
/// SIGXFSZ ends the process. Processes that this one starts are not affected. No effect on Windows, which has no such
/// limit.
void IgnoreFileSizeSignal();

} // namespace platform
