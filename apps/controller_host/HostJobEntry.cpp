#include "controller_host/HostJobEntry.h"

#include "CommonControllerLib/ControllerLogManager.h"
#include "CommonControllerLib/PathFuncs.h"
#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "formats/RunProtocol.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "platform/processes/Process.h"
#include "platform/system/Clock.h"

#include <utility>
#include <vector>

namespace {

/// The reason of a failure: the engine's, or the first message of the result.
std::wstring ReasonOf(const JobEntry& job) {
    if (!job.GetFailure().empty()) {
        return job.GetFailure();
    }
    bool hasSucceeded = false;
    std::vector<std::pair<int, std::wstring>> messages;
    std::vector<std::wstring> outputFiles;
    const std::wstring path = PathFuncs::Join(job.GetWorkDir(), run_protocol::resultFileName);
    const bool isRead = ControllerCSWrapper::ParseRunScenarioResult(path, hasSucceeded, messages, outputFiles);
    return isRead && !messages.empty() ? messages.front().second : std::wstring();
}

/// True if the process says, by its exit code, that the attempt was killed, exceeded a limit or crashed.
bool HasCrashed(std::optional<std::int32_t> exitCode) {
    return !exitCode || *exitCode == run_protocol::crashedExitCode || *exitCode == run_protocol::timedOutExitCode ||
           platform::IsCrash(*exitCode);
}

} // namespace

bool HostJobEntry::OnCancelJob() {
    return platform::IsLink(info.workDir) || JobEntry::OnCancelJob();
}

void HostJobEntry::Requeue() {
    ChangeStatus(JobStatus::Queued);
    info.progress = 0;
    info.startTime.clear();
    info.endTime.clear();
    info.outputDir = RequestedOutputDir(info.outputDir, queue);
    queue.hasOwnOutputDir = false;
    outputFolder.clear();
    failure.clear();
    hasStarted = false;
    isInterrupted = false;
    stopReason.clear();
    logStamp.reset();
}

void HostJobEntry::Interrupt() {
    isInterrupted = true;
    OnCancelJob();
}

void HostJobEntry::NoteStart(std::int64_t now) {
    if (!hasStarted) {
        hasStarted = true;
        ++queue.attempt;
        attempt = {now, now};
    }
}

bool HostJobEntry::OnCheckUpdate() {
    EnforceLimits();
    const std::optional<std::int32_t> exitCode = ExitCodeOfEnded();
    const std::wstring outputDir = info.outputDir;
    const bool isChanged = JobEntry::OnCheckUpdate();
    queue.hasOwnOutputDir = queue.hasOwnOutputDir || info.outputDir != outputDir;
    if (isChanged) {
        attempt.lastSign = platform::Now();
    }
    if (info.status == JobStatus::Failed && isInterrupted) {
        KeepLog();
        Requeue();
    } else if (info.status == JobStatus::Failed) {
        EndAttempt(!stopReason.empty() || HasCrashed(exitCode));
    }
    return isChanged;
}

/// The request to stop contains the reason, which the runner puts into the result.
void HostJobEntry::EnforceLimits() {
    if (info.status != JobStatus::Running || !stopReason.empty()) {
        return;
    }
    RenewLastSign();
    stopReason = retry_policy::ReasonToStop(queue, attempt, platform::Now());
    if (!stopReason.empty() && !platform::IsLink(info.workDir)) {
        ControllerLogManager::WarnLog(L"Job: " + std::to_wstring(info.seqId) + L" is stopped: " + stopReason);
        // On failure the error is logged; the job runs on.
        (void)run_protocol::WriteFile(stopReason, PathFuncs::Join(info.workDir, run_protocol::killFileName));
    }
}

void HostJobEntry::RenewLastSign() {
    if (queue.silenceLimit.value_or(0) == 0) {
        return;
    }
    const auto stamp = platform::StampOf(PathFuncs::Join(info.workDir, run_protocol::logFileName));
    if (stamp != logStamp) {
        logStamp = stamp;
        attempt.lastSign = platform::Now();
    }
}

std::optional<std::int32_t> HostJobEntry::ExitCodeOfEnded() const {
    const bool hasEnded = processHandle != nullptr && !platform::IsProcessRunning(processHandle);
    return hasEnded ? platform::ExitCode(processHandle) : std::nullopt;
}

void HostJobEntry::EndAttempt(bool hasCrashed) {
    const auto next = retry_policy::NextAttempt(queue, queue.attempt, hasCrashed, platform::Now());
    if (!next) {
        return;
    }
    queue.lastEnding = stopReason.empty() ? ReasonOf(*this) : stopReason;
    ControllerLogManager::WarnLog(L"Job: " + std::to_wstring(info.seqId) + L" is run again, after attempt " +
                                  std::to_wstring(queue.attempt) + L" of " + std::to_wstring(MostAttempts(queue)) +
                                  L": " + queue.lastEnding);
    KeepLog();
    Requeue();
    queue.notBefore = *next;
}

void HostJobEntry::KeepLog() const {
    if (!platform::IsLink(info.workDir)) {
        // An attempt that could not be started has no log.
        (void)platform::RenameFile(PathFuncs::Join(info.workDir, run_protocol::logFileName),
                                   PathFuncs::Join(info.workDir, run_protocol::AttemptLogName(queue.attempt)));
    }
}

const QueueRecord& QueueRecordOf(const JobEntry& job) {
    static const QueueRecord defaults;
    const auto* const entry = dynamic_cast<const HostJobEntry*>(&job);
    return entry == nullptr ? defaults : entry->queue;
}
