#include "engine/JobEntry.h"

#include "companion/ControllerCSWrapper.h"
#include "platform/Clock.h"
#include "platform/FaultPoint.h"
#include "platform/ProcessHandle.h"
#include "support/PathFuncs.h"

#include <utility>
#include <vector>

namespace {

/// What the scenario itself says at its end; a result that is missing or cannot be read is no success.
bool HasSucceeded(const std::wstring& workDir) {
    bool succeeded = false;
    std::vector<std::pair<int, std::wstring>> messages;
    std::vector<std::wstring> outputFiles;
    return ControllerCSWrapper::ParseRunScenarioResult(PathFuncs::Join(workDir, L"run_scenario_result.json"), succeeded,
                                                       messages, outputFiles) &&
           succeeded;
}

} // namespace

void JobEntry::UpdateProgress(int progress, const std::wstring& message) {
    info.progress = progress;
    if (!progressMessage.empty()) {
        progressMessage = message;
    }
}

bool JobEntry::OnCheckUpdate() {
    if (processHandle != nullptr && platform::IsProcessRunning(processHandle)) {
        return ReadProgress();
    }
    Finish();
    return true;
}

bool JobEntry::ReadProgress() {
    std::wstring message;
    int progress = 0;
    const std::wstring path = PathFuncs::Join(info.workDir, L"progress_info_list.json");
    if (!ControllerCSWrapper::ParseProgressFile(path, message, progress) || progress == info.progress) {
        return false;
    }
    platform::ReachFaultPoint(platform::FaultPoint::ProgressSeen);
    UpdateProgress(progress, message);
    return true;
}

void JobEntry::Finish() {
    constexpr int finished = 100;
    platform::ReachFaultPoint(platform::FaultPoint::EndSeen);
    CloseProcessHandle();
    SetOutputFolder();
    SetEndTime(platform::Now());
    if (info.progress != finished) {
        UpdateProgress(finished, L"");
    }
    if (info.status == JobStatus::Canceling) {
        ChangeStatus(JobStatus::Canceled);
    } else {
        ChangeStatus(HasSucceeded(info.workDir) ? JobStatus::Success : JobStatus::Failed);
    }
    platform::ReachFaultPoint(platform::FaultPoint::ResultRead);
}
