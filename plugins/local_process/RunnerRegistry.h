#pragma once

#include <map>
#include <mutex>
#include <string>

#include "platform/system/OwnedHandle.h"

namespace local_process {

/// The runners that were started and may still run, by job id. Threads: any.
class RunnerRegistry {
public:
    /// The caller keeps ownership of `process`.
    void Add(const std::wstring& jobId, const std::wstring& workDir, void* process);
    /// Asks the runner of a job to stop its scenario. Returns false if no runner of this job runs.
    [[nodiscard]] bool RequestStopOf(const std::wstring& jobId);
    void RequestStopOfAll();

private:
    struct Runner {
        std::wstring workDir;
        platform::OwnedHandle process;
    };

    void ForgetEnded();

    std::mutex mutex;
    std::map<std::wstring, Runner> runners;
};

} // namespace local_process
