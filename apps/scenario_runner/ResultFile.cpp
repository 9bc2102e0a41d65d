#include "scenario_runner/ResultFile.h"

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"

namespace scenario_runner {

ResultFile::ResultFile(const std::wstring& workDir)
    : path(platform::ResolveAgainst(workDir, run_protocol::resultFileName)) {}

bool ResultFile::Remove() const {
    const platform::Error result = platform::RemoveFile(path);
    return result || result.kind == platform::ErrorKind::NotFound;
}

bool ResultFile::Exists() const {
    return platform::Exists(path) || platform::IsLink(path);
}

std::optional<run_protocol::RunScenarioResult> ResultFile::Read() const {
    run_protocol::RunScenarioResult result;
    if (!Exists() ||
        !ControllerCSWrapper::ParseRunScenarioResult(path, result.succeeded, result.messages, result.outputFiles)) {
        return std::nullopt;
    }
    return result;
}

bool ResultFile::Write(const run_protocol::RunScenarioResult& result) const {
    return run_protocol::WriteFile(run_protocol::SerializeRunScenarioResult(result), path);
}

} // namespace scenario_runner
