#include "formats/ResultFile.h"

#include "formats/Boundary.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"

namespace run_protocol {
namespace {

/// The code of a message that the programs of this project write, not the scenario.
constexpr int failureCode = 1;

std::wstring ResultPath(const std::wstring& workDir) {
    return platform::ResolveAgainst(workDir, resultFileName);
}

} // namespace

bool RemoveResult(const std::wstring& workDir) {
    return boundary::Guard("RemoveResult", [&] {
        const platform::Error result = platform::RemoveFile(ResultPath(workDir));
        return result || result.kind == platform::ErrorKind::NotFound;
    });
}

bool ResultExists(const std::wstring& workDir) {
    return boundary::Guard("ResultExists", [&] {
        const std::wstring path = ResultPath(workDir);
        return platform::Exists(path) || platform::IsLink(path);
    });
}

bool WriteResult(const std::wstring& workDir, const RunScenarioResult& result) {
    return boundary::Guard("WriteResult",
                           [&] { return WriteFile(SerializeRunScenarioResult(result), ResultPath(workDir)); });
}

RunScenarioResult FailedResult(const std::wstring& jobId, const std::wstring& problem) {
    return boundary::Guard("FailedResult", [&] {
        return RunScenarioResult{jobId, false, {{failureCode, problem}}, {}};
    });
}

} // namespace run_protocol
