#include "RunLoop.h"

#include <algorithm>
#include <chrono>

#include "platform/processes/Waiting.h"

namespace {

constexpr std::chrono::milliseconds progressInterval{200};

void WaitForProcess(HostEngine& engine) {
    const std::vector<void*> processes = engine.ActiveProcesses();
    if (!processes.empty()) {
        platform::WaitForAny(processes, progressInterval);
    }
}

} // namespace

std::size_t RunUntilCompleted(HostEngine& engine) {
    std::vector<JobStatusInfo> changed;
    while (!engine.IsCompleted()) {
        while (engine.ExecuteJob(nullptr, changed)) {
        }
        WaitForProcess(engine);
        std::vector<JobStatusInfo> ended;
        engine.CheckUpdate(ended);
        changed.insert(changed.end(), ended.begin(), ended.end());
    }
    return static_cast<std::size_t>(std::count_if(
        changed.begin(), changed.end(), [](const JobStatusInfo& job) { return job.status == JobStatus::Success; }));
}
