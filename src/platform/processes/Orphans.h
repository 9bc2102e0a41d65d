#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <set>
#include <string>

/// Supervision that outlives the supervised: nothing that a process started remains as an orphan.
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

/// Kills the processes of this user, except this one, that were started with the environment variable `variable` set to
/// one of `values`, and those they start during the call. Returns the number of killed processes when none is left, or
/// after some seconds. For orphans of a supervisor that died. Does nothing on Windows, where the job object ends with
/// its owner and takes the whole tree with it. Threads: any.
std::size_t KillProcessesByEnvironment(const std::wstring& variable, const std::set<std::wstring>& values);

} // namespace platform
