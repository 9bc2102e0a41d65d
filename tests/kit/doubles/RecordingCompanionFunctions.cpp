#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "kit/doubles/RecordingCompanion.h"

#include <stdexcept>

namespace {

RecordingCompanion& Companion() {
    return RecordingCompanion::Current();
}

void Call(const std::function<void()>& hook) {
    if (hook) {
        hook();
    }
}

template <typename Value>
const Value* Find(const std::map<std::wstring, Value>& values, const std::wstring& key) {
    const auto found = values.find(key);
    return found == values.end() ? nullptr : &found->second;
}

bool TakeProgress(const RecordingCompanion::Progress* scripted, std::wstring& message, int& progress) {
    if (scripted == nullptr) {
        return false;
    }
    message = scripted->message;
    progress = scripted->progress;
    return true;
}

using Messages = std::vector<std::pair<int, std::wstring>>;

bool TakeResult(const RecordingCompanion::Result* scripted, bool& succeeded, Messages& pairs,
                std::vector<std::wstring>& texts) {
    if (scripted == nullptr) {
        return false;
    }
    succeeded = scripted->succeeded;
    pairs.insert(pairs.end(), scripted->messages.begin(), scripted->messages.end());
    texts.emplace_back(L"an output file");
    return true;
}

} // namespace

void ControllerCSWrapper::ChangeLogFilePath(const std::wstring& path) {
    Companion().AddEvent(L"log file: ", path);
}

void ControllerCSWrapper::WriteInfoLog(const std::wstring& message) {
    Companion().AddEvent(L"info: ", message);
}

void ControllerCSWrapper::WriteWarnLog(const std::wstring& message) {
    Companion().AddEvent(L"warn: ", message);
}

void ControllerCSWrapper::WriteErrorLog(const std::wstring& message) {
    Companion().AddEvent(L"error: ", message);
}

void ControllerCSWrapper::WriteDebugLog(const std::wstring& message) {
    Companion().AddEvent(L"debug: ", message);
}

std::wstring ControllerCSWrapper::GetWorkDirectory() {
    return Companion().workDirectory;
}

std::wstring ControllerCSWrapper::GetJobListFile() {
    return Companion().jobListFile;
}

bool ControllerCSWrapper::IsAutoDeleteWorkFolder(int& days) {
    const auto scripted = Companion().autoDeleteDays;
    days = scripted.value_or(days);
    return scripted.has_value();
}

std::vector<ScenarioDirectory> ControllerCSWrapper::GetScenarioDirectoryList() {
    return Companion().scenarioDirectories;
}

std::wstring ControllerCSWrapper::GetCultureInfo() {
    return Companion().culture;
}

std::wstring ControllerCSWrapper::GetDefaultCultureInfo() {
    return Companion().defaultCulture;
}

std::wstring ControllerCSWrapper::GetFileNameWithoutExtension(const std::wstring& path) {
    const std::wstring name = path.substr(path.find_last_of(L"\\/") + 1);
    return name.substr(0, name.rfind(L'.'));
}

bool ControllerCSWrapper::CreateJsonFile(const std::wstring& json, const std::wstring& path) {
    Call(Companion().onWrite);
    return Companion().AddWrite(json, path);
}

bool ControllerCSWrapper::RemoveJobWorkDirectory(const std::wstring& workDir) {
    Companion().AddEvent(L"remove: ", workDir);
    if (!Companion().canRemoveWorkDirectories) {
        throw std::runtime_error("The work directory cannot be removed.");
    }
    return true;
}

std::wstring ControllerCSWrapper::Serialize(const std::wstring& key, const std::vector<JobListInfo>& records) {
    return Companion().AddJobList(key, records);
}

bool ControllerCSWrapper::Deserialize(const std::wstring& text, void*& value) {
    const auto* const handle = Find(Companion().processHandles, text);
    value = handle == nullptr ? value : *handle;
    return handle != nullptr;
}

bool ControllerCSWrapper::ParseJobList(const std::wstring& path, std::vector<JobListInfo>& records) {
    const auto& saved = Companion().savedJobs;
    if (!saved || path != Companion().jobListFile) {
        return false;
    }
    records.insert(records.end(), saved->begin(), saved->end());
    return true;
}

bool ControllerCSWrapper::ParseProgressFile(const std::wstring& path, std::wstring& message, int& progress) {
    Companion().AddFileRead(path);
    return TakeProgress(Find(Companion().progressFiles, path), message, progress);
}

bool ControllerCSWrapper::ParseProgressFileString(const std::wstring& json, std::wstring& jobId, std::wstring& message,
                                                  int& progress) {
    Call(Companion().onParse);
    const auto* const scripted = Find(Companion().progressTexts, json);
    jobId = scripted == nullptr ? jobId : scripted->jobId;
    return TakeProgress(scripted, message, progress);
}

bool ControllerCSWrapper::ParseRunScenarioResult(const std::wstring& path, bool& succeeded, Messages& pairs,
                                                 std::vector<std::wstring>& texts) {
    Companion().AddFileRead(path);
    return TakeResult(Find(Companion().resultFiles, path), succeeded, pairs, texts);
}

bool ControllerCSWrapper::ParseRunScenarioResultString(const std::wstring& json, std::wstring& jobId, bool& succeeded,
                                                       Messages& pairs, std::vector<std::wstring>& texts) {
    Call(Companion().onParse);
    const auto* const scripted = Find(Companion().resultTexts, json);
    jobId = scripted == nullptr ? jobId : scripted->jobId;
    return TakeResult(scripted, succeeded, pairs, texts);
}

bool ControllerCSWrapper::CreateRunScenarioInfoString(const std::wstring& jobId, const std::wstring& scenarioPath,
                                                      const std::vector<std::wstring>& inputFiles,
                                                      const std::wstring& outputFolder, const std::wstring& workDir,
                                                      const std::wstring& runArgument, std::wstring& json) {
    if (!Companion().canBuildRunRequests) {
        return false;
    }
    json = Companion().AddRunRequest({jobId, scenarioPath, inputFiles, outputFolder, workDir, runArgument});
    return true;
}

bool ControllerCSWrapper::GetScenarioInfo(const std::wstring& path, ScenarioInfo& info) {
    const auto* const scripted = Find(Companion().packages, path);
    if (scripted != nullptr) {
        info = *scripted;
    }
    return scripted != nullptr;
}

bool ControllerCSWrapper::GetScenarioParameterSetInfo(const std::wstring& scenarioPath,
                                                      std::vector<ScenarioParameterSetInfo>& out) {
    const auto* const scripted = Find(Companion().parameterSets, scenarioPath);
    if (scripted != nullptr) {
        out.insert(out.end(), scripted->begin(), scripted->end());
    }
    return scripted != nullptr;
}
