#include "controller_host/FailureReasons.h"

#include "CommonControllerLib/ControllerLogManager.h"
#include "CommonControllerLib/PathFuncs.h"
#include "formats/ResultFile.h"
#include "formats/RunProtocol.h"
#include "platform/files/Directory.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"

namespace {

/// Never overwrites a result of the scenario.
bool LeaveResult(const JobListInfo& job, const std::wstring& result) {
    const std::wstring path = PathFuncs::Join(job.workDir, run_protocol::resultFileName);
    std::wstring problem;
    return !job.workDir.empty() && !run_protocol::ResultExists(job.workDir) &&
           run_protocol::MakeWorkDirectory(job.workDir, problem) && run_protocol::WriteFile(result, path);
}

void LeaveNote(const std::wstring& path, const std::wstring& result) {
    if (!path.empty() && platform::EnsurePrivateDirectories(platform::ParentDirectory(path))) {
        // A failed write has already been logged.
        (void)run_protocol::WriteFile(result, path);
    }
}

} // namespace

void FailureReasons::Leave(const JobListInfo& job, const std::wstring& reason) const {
    ControllerLogManager::WarnLog(L"Job: " + std::to_wstring(job.seqId) + L" failed: " + reason);
    const std::wstring result = run_protocol::SerializeRunScenarioResult(run_protocol::FailedResult(job.id, reason));
    if (!LeaveResult(job, result)) {
        LeaveNote(run_protocol::FailureNotePath(list, job.id), result);
    }
}

void FailureReasons::KeepOnly(const std::function<bool(const std::wstring& id)>& isListed) const {
    const std::wstring directory = run_protocol::FailureNotesDirectory(list);
    std::vector<platform::DirectoryEntry> entries;
    if (!platform::IsDirectory(directory) || platform::IsLink(directory) ||
        !platform::ListDirectory(directory, entries)) {
        return;
    }
    for (const platform::DirectoryEntry& entry : entries) {
        const std::wstring id = entry.name.substr(0, entry.name.find(L'.'));
        const std::wstring path = run_protocol::FailureNotePath(list, id);
        if (path.empty() || isListed(id)) {
            continue;
        }
        if (const platform::Error result = platform::RemoveFile(path); !result) {
            ControllerLogManager::WarnLog(L"The reason of a deleted job cannot be removed: " +
                                          platform::ToNativeText(path) + L": " + result.Text());
        }
    }
}
