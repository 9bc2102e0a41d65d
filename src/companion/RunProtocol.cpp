#include "companion/RunProtocol.h"

#include "companion/Boundary.h"
#include "companion/ProcessHandleText.h"
#include "companion/RunLayouts.h"
#include "companion/json/Reading.h"
#include "companion/json/Writing.h"

namespace run_protocol {

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

std::wstring SerializeProcessHandle(void* process) {
    return boundary::Guard("SerializeProcessHandle",
                           [&] { return json::WriteEnvelope(L"ProcessHandle", process_handle_text::Format(process)); });
}

} // namespace run_protocol
