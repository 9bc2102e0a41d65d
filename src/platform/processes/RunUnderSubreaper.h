#pragma once

#include <cstdint>
#include <functional>

namespace platform {

struct WorkerExit {
    std::int32_t exitCode = 0;
    /// The worker was killed by a signal and returned nothing; all its descendants have been killed after it.
    bool wasSignaled = false;
};

/// Runs `work` so that nothing it started survives it, however it ends. On Linux, `work` runs in a forked process. This
/// process supervises it as a subreaper: it forwards stop requests (SIGTERM, SIGINT, SIGHUP), resumes the worker if it
/// is stopped, and adopts and kills its orphans. On Windows, where a process tree ends with its owner, `work` runs in
/// this process. `work` gets a handle to the supervising process, to notice its end; null if there is none. Must be
/// called while this process has a single thread.
WorkerExit RunUnderSubreaper(const std::function<std::int32_t(void* subreaper)>& work);

} // namespace platform
