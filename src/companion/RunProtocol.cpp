#include "companion/RunProtocol.h"

#include "companion/Boundary.h"
#include "companion/ControllerCSWrapper.h"
#include "companion/ProcessHandleText.h"
#include "companion/RunLayouts.h"
#include "companion/json/Reading.h"
#include "companion/json/Writing.h"
#include "platform/FileSystem.h"
#include "platform/ForeignProcess.h"
#include "platform/NativePath.h"
#include "platform/Text.h"

namespace run_protocol {

std::wstring RunInfoPath(const std::wstring& workDir) {
    return boundary::Guard("RunInfoPath",
                           [&] { return platform::ToNativeText(platform::ResolveAgainst(workDir, runInfoFileName)); });
}

bool ParseRunScenarioInfo(const std::wstring& json, RunScenarioInfo& info, std::wstring& problem) {
    return boundary::Guard("ParseRunScenarioInfo", [&] { return json::Read(std::wstring_view(json), info, problem); });
}

bool ReadRunScenarioInfoFile(const std::wstring& path, RunScenarioInfo& info, std::wstring& problem) {
    return boundary::Guard("ReadRunScenarioInfoFile",
                           [&] { return json::ReadFile(path, json::largestText, info, problem); });
}

std::wstring SerializeRunScenarioInfo(const RunScenarioInfo& info) {
    return boundary::Guard("SerializeRunScenarioInfo", [&] { return json::Write(info); });
}

std::wstring SerializeRunScenarioResult(const RunScenarioResult& result) {
    return boundary::Guard("SerializeRunScenarioResult", [&] { return json::Write(result); });
}

std::wstring SerializeProgress(const std::wstring& jobId, int progress, const std::wstring& message) {
    return boundary::Guard("SerializeProgress", [&] {
        return json::Write(ProgressFile{jobId, {ProgressReport{progress, message}}});
    });
}

namespace {

platform::Error ReplaceInFolder(const std::wstring& json, const std::wstring& path) {
    if (json.empty()) {
        return {platform::ErrorKind::Other, 0};
    }
    if (!platform::IsFolder(platform::ParentFolder(path))) {
        return {platform::ErrorKind::NotFound, 0};
    }
    return platform::ReplaceFile(path, platform::ToUtf8(json), platform::Outlives::Process);
}

} // namespace

bool WriteFile(const std::wstring& json, const std::wstring& path) {
    return boundary::Guard("WriteFile", [&] {
        const platform::Error error = ReplaceInFolder(json, path);
        if (error) {
            ControllerCSWrapper::WriteErrorLog(L"The file cannot be written: " + platform::ToNativeText(path) + L": " +
                                               error.Text());
        }
        return !error;
    });
}

std::wstring SerializeProcessHandle(void* process) {
    return boundary::Guard("SerializeProcessHandle", [&] {
        const std::uint64_t number = platform::NumberOfHandle(process);
        return json::WriteEnvelope(L"ProcessHandle", process_handle_text::Format(number));
    });
}

} // namespace run_protocol
