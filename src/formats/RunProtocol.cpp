#include "formats/RunProtocol.h"

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "formats/Boundary.h"
#include "formats/RunLayouts.h"
#include "formats/json/Reading.h"
#include "formats/json/Writing.h"
#include "platform/files/Directory.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "platform/files/ReplaceFile.h"
#include "platform/processes/ForeignProcess.h"
#include "text/Hexadecimal.h"
#include "text/Text.h"

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

platform::Error ReplaceInDirectory(const std::wstring& json, const std::wstring& path) {
    if (json.empty()) {
        return {platform::ErrorKind::Other, 0};
    }
    if (!platform::IsDirectory(platform::ParentDirectory(path))) {
        return {platform::ErrorKind::NotFound, 0};
    }
    return platform::ReplaceFile(path, text::ToUtf8(json), platform::Durability::Unsynced);
}

} // namespace

bool ReadProgressReports(const std::wstring& path, std::vector<ProgressReport>& reports, std::wstring& problem) {
    return boundary::Guard("ReadProgressReports", [&] {
        ProgressFile file;
        if (!json::ReadFile(path, json::largestSmallFile, file, problem)) {
            return false;
        }
        reports = std::move(file.reports);
        return true;
    });
}

bool WriteFile(const std::wstring& json, const std::wstring& path) {
    return boundary::Guard("WriteFile", [&] {
        const platform::Error result = ReplaceInDirectory(json, path);
        if (!result) {
            ControllerCSWrapper::WriteErrorLog(L"The file cannot be written: " + platform::ToNativeText(path) + L": " +
                                               result.Text());
        }
        return static_cast<bool>(result);
    });
}

namespace {

std::wstring WhyNotMade(const std::wstring& workDir) {
    const std::wstring parent = platform::ParentDirectory(workDir);
    if (const platform::Error result = platform::EnsurePrivateDirectories(parent); !result) {
        return L"cannot be made: " + result.Text();
    }
    if (platform::IsReplaceableByOthers(parent)) {
        return L"is not made, because other users could exchange it";
    }
    const platform::Error result = platform::EnsurePrivateDirectory(workDir);
    return result ? std::wstring() : L"cannot be made: " + result.Text();
}

} // namespace

bool IsJobId(std::wstring_view text) {
    constexpr std::size_t longestId = 8;
    return !text.empty() && text.size() <= longestId &&
           text.find_first_not_of(text::hexadecimalDigits) == std::wstring_view::npos;
}

bool MakeWorkDirectory(const std::wstring& workDir, std::wstring& problem) {
    return boundary::Guard("MakeWorkDirectory", [&] {
        problem = WhyNotMade(workDir);
        return problem.empty();
    });
}

std::wstring FailureNotesDirectory(const std::wstring& jobListFile) {
    return boundary::Guard("FailureNotesFolder", [&] { return jobListFile + L".failures"; });
}

std::wstring FailureNotePath(const std::wstring& jobListFile, const std::wstring& jobId) {
    return boundary::Guard("FailureNotePath", [&] {
        return IsJobId(jobId) ? platform::ResolveAgainst(FailureNotesDirectory(jobListFile), jobId + L".json")
                              : std::wstring();
    });
}

std::wstring SerializeProcessHandle(void* process) {
    return boundary::Guard("SerializeProcessHandle", [&] {
        return json::WriteEnvelope(L"ProcessHandle", text::HandleText(platform::NumberOfHandle(process)));
    });
}

} // namespace run_protocol
