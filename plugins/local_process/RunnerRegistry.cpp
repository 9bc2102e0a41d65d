#include "local_process/RunnerRegistry.h"

#include "companion/RunProtocol.h"
#include "platform/FileSystem.h"
#include "platform/NativePath.h"

namespace local_process {
namespace {

/// As a runner is asked by everybody.
void RequestStop(const std::wstring& workDir) {
    platform::CreateEmptyFile(platform::ResolveAgainst(workDir, run_protocol::killFileName));
}

} // namespace

void RunnerRegistry::Add(const std::wstring& jobId, const std::wstring& workDir, void* process) {
    const std::lock_guard lock(mutex);
    ForgetEnded();
    runners.insert_or_assign(jobId, Runner{workDir, platform::OwnedHandle(platform::CopyHandle(process))});
}

bool RunnerRegistry::AskToStop(const std::wstring& jobId) {
    const std::lock_guard lock(mutex);
    ForgetEnded();
    const auto runner = runners.find(jobId);
    if (runner == runners.end()) {
        return false;
    }
    RequestStop(runner->second.workDir);
    return true;
}

void RunnerRegistry::AskAllToStop() {
    const std::lock_guard lock(mutex);
    ForgetEnded();
    for (const auto& [jobId, runner] : runners) {
        RequestStop(runner.workDir);
    }
}

void RunnerRegistry::ForgetEnded() {
    std::erase_if(runners, [](const auto& entry) { return !platform::IsProcessRunning(entry.second.process.Get()); });
}

} // namespace local_process
