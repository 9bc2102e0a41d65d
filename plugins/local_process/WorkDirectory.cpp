#include "local_process/WorkDirectory.h"

#include <algorithm>

#include "fault_points/FaultPoint.h"
#include "formats/ResultFile.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"

namespace local_process {
namespace {

using run_protocol::RunScenarioInfo;

/// Scenarios get paths in the notation of their system.
RunScenarioInfo WithNativePaths(RunScenarioInfo info) {
    info.scenarioPath = platform::ToNativeText(info.scenarioPath);
    info.outputFolder = platform::ToNativeText(info.outputFolder);
    info.workDir = platform::ToNativeText(info.workDir);
    std::transform(info.inputFiles.begin(), info.inputFiles.end(), info.inputFiles.begin(), platform::ToNativeText);
    return info;
}

platform::Error RemoveLeftovers(const std::wstring& workDir) {
    for (const wchar_t* const name :
         {run_protocol::progressFileName, run_protocol::resultFileName, run_protocol::killFileName}) {
        const platform::Error result = platform::RemoveFile(platform::ResolveAgainst(workDir, name));
        if (!result && result.kind != platform::ErrorKind::NotFound) {
            return result;
        }
    }
    return {};
}

bool Fail(const RunScenarioInfo& info, const std::wstring& what, std::wstring& problem) {
    problem = L"The work directory " + platform::ToNativeText(info.workDir) + L" of job " + info.jobId + L" " + what +
              L". Check the setting \"workDirectory\".";
    return false;
}

} // namespace

bool PrepareWorkDirectory(const RunScenarioInfo& info, std::wstring& problem) {
    std::wstring obstacle;
    if (!run_protocol::MakeWorkDirectory(info.workDir, obstacle)) {
        return Fail(info, obstacle, problem);
    }
    if (const platform::Error result = RemoveLeftovers(info.workDir); !result) {
        return Fail(info, L"holds files of an earlier run that cannot be removed: " + result.Text(), problem);
    }
    fault_points::ReachFaultPoint(fault_points::FaultPoint::WorkDirectoryMade);
    const std::wstring path = platform::ResolveAgainst(info.workDir, run_protocol::runInfoFileName);
    return run_protocol::WriteFile(run_protocol::SerializeRunScenarioInfo(WithNativePaths(info)), path) ||
           Fail(info, L"cannot be written", problem);
}

void LeaveFailedResult(const RunScenarioInfo& info, const std::wstring& problem) {
    if (!platform::IsDirectory(info.workDir) || platform::IsLink(info.workDir)) {
        return;
    }
    // The job fails in any case, and the log has the problem.
    (void)run_protocol::WriteResult(info.workDir, run_protocol::FailedResult(info.jobId, problem));
}

} // namespace local_process
