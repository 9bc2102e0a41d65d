#include "CommonControllerLib/JobEntry.h"

#include "CommonControllerLib/PathFuncs.h"
#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "engine/Queue.h"
#include "fault_points/FaultPoint.h"
#include "formats/RunFileNames.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "platform/processes/Process.h"
#include "platform/system/Clock.h"
#include "platform/system/OwnedHandle.h"

#include <optional>
#include <utility>
#include <vector>

namespace {

/// The result written by the scenario; a missing or invalid result counts as a failure.
struct Result {
    explicit Result(const std::wstring& path) {
        std::vector<std::wstring> outputFiles;
        isRead = ControllerCSWrapper::ParseRunScenarioResult(path, succeeded, messages, outputFiles);
    }
    bool SaysWhy() const { return isRead && !messages.empty() && !messages.front().second.empty(); }

    bool isRead = false;
    bool succeeded = false;
    std::vector<std::pair<int, std::wstring>> messages;
};

/// Returns the end of a sentence about the job's process.
std::wstring EndingOf(void* process) {
    const auto exitCode = process == nullptr ? std::nullopt : platform::ExitCode(process);
    return exitCode ? L"ended with " + platform::ExitCodeText(*exitCode) : std::wstring(L"ended");
}

std::wstring WhyThereIsNoResult(const std::wstring& workDir, const std::wstring& path) {
    if (!platform::IsDirectory(workDir)) {
        return L"its work directory is gone: " + platform::ToNativeText(workDir);
    }
    return platform::Exists(path) ? L"its result cannot be read: " + platform::ToNativeText(path)
                                  : L"it left no result: " + platform::ToNativeText(path);
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
    const std::wstring path = PathFuncs::Join(info.workDir, run_protocol::progressFileName);
    if (!ControllerCSWrapper::ParseProgressFile(path, message, progress) || progress == info.progress) {
        return false;
    }
    fault_points::ReachFaultPoint(fault_points::FaultPoint::ProgressSeen);
    UpdateProgress(progress, message);
    return true;
}

void JobEntry::Finish() {
    constexpr int finished = 100;
    fault_points::ReachFaultPoint(fault_points::FaultPoint::EndSeen);
    const std::wstring ending = EndingOf(processHandle);
    CloseProcessHandle();
    SetOutputFolder();
    SetEndTime(platform::Now());
    if (info.progress != finished) {
        UpdateProgress(finished, L"");
    }
    const bool hasSucceeded = info.status != JobStatus::Canceling && TakeResult(ending);
    ChangeStatus(queue::AfterEnd(info.status, hasSucceeded));
    fault_points::ReachFaultPoint(fault_points::FaultPoint::ResultRead);
}

bool JobEntry::TakeResult(const std::wstring& ending) {
    const std::wstring path = PathFuncs::Join(info.workDir, run_protocol::resultFileName);
    const Result result(path);
    if (result.isRead && result.succeeded) {
        return true;
    }
    if (result.SaysWhy()) {
        failure.clear();
    } else if (result.isRead) {
        failure = L"The scenario reported a failure without saying why.";
    } else if (failure.empty()) {
        failure = L"The job's process " + ending + L", and " + WhyThereIsNoResult(info.workDir, path);
    }
    return false;
}
