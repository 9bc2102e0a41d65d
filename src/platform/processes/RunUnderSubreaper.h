#pragma once

#include <cstdint>
#include <functional>

namespace platform {

struct WorkerExit {
    std::int32_t exitCode = 0;
    /// Somebody ended the work, which returned nothing; what it had started has been ended after it.
    bool wasSignaled = false;
};

/// Does `work` in such a way that whatever ends it, nothing that it started outlives it. On Linux a new process works,
/// and this one only watches: it hands on the wish to stop (SIGTERM, SIGINT, SIGHUP), wakes the work up when somebody
/// stopped it, and inherits what the work leaves behind. On Windows, where a process tree ends with its owner, `work`
/// is done right here. `work` gets the handle of the process that watches, to notice its end; null when there is none.
/// To be called while this process has one thread.
WorkerExit RunUnderSubreaper(const std::function<std::int32_t(void* subreaper)>& work);

} // namespace platform
