#include "ControllerCSWrapper/ControllerCSWrapper.h"

#include "formats/Boundary.h"
#include "formats/MessageText.h"
#include "formats/RunLayouts.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"

namespace {

using run_protocol::ProgressFile;
using run_protocol::RunScenarioInfo;
using run_protocol::RunScenarioResult;

/// A file without reports is treated as unreadable.
bool HasReport(const ProgressFile& file, std::wstring& problem) {
    if (file.reports.empty()) {
        problem = L"the list \"progressInfoList\" is empty";
    }
    return !file.reports.empty();
}

void TakeReport(ProgressFile&& file, std::wstring& message, int& progress) {
    message = std::move(file.reports.back().message);
    progress = file.reports.back().progress;
}

/// Retries while another process holds the file: the scenario writes its result only once.
bool ReadResult(const std::wstring& path, RunScenarioResult& result, std::wstring& problem) {
    std::string bytes;
    if (const platform::Error read = platform::ReadFileRetrying(path, json::largestSmallFile, bytes); !read) {
        problem = platform::ToNativeText(path) + L": " + read.Text();
        return false;
    }
    if (!json::Read(std::move(bytes), result, problem)) {
        problem = json::ProblemInFile(path, problem);
        return false;
    }
    return true;
}

using Messages = std::vector<std::pair<int, std::wstring>>;

void TakeResult(RunScenarioResult&& result, bool& succeeded, Messages& pairs, std::vector<std::wstring>& texts) {
    pairs.reserve(pairs.size() + result.messages.size());
    message_text::AppendAll(texts, std::move(result.outputFiles));
    message_text::AppendAll(pairs, std::move(result.messages));
    succeeded = result.succeeded;
}

} // namespace

/// Logs nothing: polling regularly finds a file that is missing or partially written.
bool ControllerCSWrapper::ParseProgressFile(const std::wstring& path, std::wstring& message, int& progress) {
    return boundary::Guard("ParseProgressFile", [&] {
        ProgressFile file;
        std::wstring problem;
        if (!json::ReadFile(path, json::largestSmallFile, file, problem) || !HasReport(file, problem)) {
            return false;
        }
        TakeReport(std::move(file), message, progress);
        return true;
    });
}

bool ControllerCSWrapper::ParseProgressFileString(const std::wstring& json, std::wstring& jobId, std::wstring& message,
                                                  int& progress) {
    return boundary::Guard("ParseProgressFileString", [&] {
        ProgressFile file;
        std::wstring problem;
        if (!json::Read(std::wstring_view(json), file, problem) || !HasReport(file, problem)) {
            WriteWarnLog(L"A progress report cannot be read: " + problem);
            return false;
        }
        jobId = std::move(file.jobId);
        TakeReport(std::move(file), message, progress);
        return true;
    });
}

bool ControllerCSWrapper::ParseRunScenarioResult(const std::wstring& path, bool& succeeded,
                                                 std::vector<std::pair<int, std::wstring>>& pairs,
                                                 std::vector<std::wstring>& texts) {
    return boundary::Guard("ParseRunScenarioResult", [&] {
        RunScenarioResult result;
        std::wstring problem;
        if (!ReadResult(path, result, problem)) {
            WriteWarnLog(L"The result of a scenario cannot be read: " + problem);
            return false;
        }
        TakeResult(std::move(result), succeeded, pairs, texts);
        return true;
    });
}

bool ControllerCSWrapper::ParseRunScenarioResultString(const std::wstring& json, std::wstring& jobId, bool& succeeded,
                                                       std::vector<std::pair<int, std::wstring>>& pairs,
                                                       std::vector<std::wstring>& texts) {
    return boundary::Guard("ParseRunScenarioResultString", [&] {
        RunScenarioResult result;
        std::wstring problem;
        if (!json::Read(std::wstring_view(json), result, problem)) {
            WriteWarnLog(L"The result of a scenario cannot be read: " + problem);
            return false;
        }
        std::wstring id = std::move(result.jobId);
        TakeResult(std::move(result), succeeded, pairs, texts);
        jobId = std::move(id);
        return true;
    });
}

bool ControllerCSWrapper::CreateRunScenarioInfoString(const std::wstring& jobId, const std::wstring& scenarioPath,
                                                      const std::vector<std::wstring>& inputFiles,
                                                      const std::wstring& outputFolder, const std::wstring& workDir,
                                                      const std::wstring& runArgument, std::wstring& json) {
    return boundary::Guard("CreateRunScenarioInfoString", [&] {
        json = json::Write(RunScenarioInfo{jobId, scenarioPath, inputFiles, outputFolder, workDir, runArgument});
        return true;
    });
}
