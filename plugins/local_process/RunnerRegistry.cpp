#include "local_process/RunnerRegistry.h"

#include "formats/RunProtocol.h"
#include "platform/files/FileSystem.h"
#include "platform/processes/Process.h"

namespace local_process {
namespace {

/// Requests the stop through the file that scenarios watch, and by a signal to the runner: the file cannot be created
/// if the scenario has removed its work directory.
void RequestStop(const std::wstring& workDir, void* process) {
    (void)platform::CreateEmptyFileIn(workDir, run_protocol::killFileName);
    platform::RequestTermination(process);
}

} // namespace

void RunnerRegistry::Add(const std::wstring& jobId, const std::wstring& workDir, void* process) {
    const std::lock_guard lock(mutex);
    ForgetEnded();
    runners.insert_or_assign(jobId, Runner{workDir, platform::OwnedHandle(platform::CopyHandle(process))});
}

bool RunnerRegistry::RequestStopOf(const std::wstring& jobId) {
    const std::lock_guard lock(mutex);
    ForgetEnded();
    const auto runner = runners.find(jobId);
    if (runner == runners.end()) {
        return false;
    }
    RequestStop(runner->second.workDir, runner->second.process.Get());
    return true;
}

void RunnerRegistry::RequestStopOfAll() {
    const std::lock_guard lock(mutex);
    ForgetEnded();
    for (const auto& [jobId, runner] : runners) {
        RequestStop(runner.workDir, runner.process.Get());
    }
}

void RunnerRegistry::ForgetEnded() {
    std::erase_if(runners, [](const auto& entry) { return !platform::IsProcessRunning(entry.second.process.Get()); });
}

} // namespace local_process
