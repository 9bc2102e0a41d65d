/// A function module in C++: the scenario file is the program to run.

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "controller_plugins/function_module.h"

#include "system_calls.h"

#include <algorithm>
#include <string>
#include <vector>

namespace {

constexpr long failed = 1;

/// The run request, with native paths.
struct Request {
    std::wstring jobId;
    std::wstring scenarioPath;
    std::vector<std::wstring> inputFiles;
    std::wstring outputFolder;
    std::wstring workDir;
    std::wstring runArgument;
};

bool ReadRequest(const std::wstring& input, Request& request) {
    const auto read = [&input](const wchar_t* name, std::wstring& text) {
        return ControllerCSWrapper::GetStringResources(input, name, text);
    };
    std::wstring inputFiles;
    return read(L"jobId", request.jobId) && read(L"scenarioPath", request.scenarioPath) &&
           read(L"inputFiles", inputFiles) && read(L"outputFolder", request.outputFolder) &&
           read(L"workDir", request.workDir) && read(L"runArgument", request.runArgument) &&
           ControllerCSWrapper::Deserialize(L"{\"inputFiles\":" + inputFiles + L"}", request.inputFiles);
}

void UseNativePaths(Request& request) {
    for (std::wstring* const path : {&request.scenarioPath, &request.outputFolder, &request.workDir}) {
        *path = NativePath(*path);
    }
    std::transform(request.inputFiles.begin(), request.inputFiles.end(), request.inputFiles.begin(), NativePath);
}

bool WriteRequest(const Request& request, const std::wstring& file) {
    std::wstring json;
    return ControllerCSWrapper::CreateRunScenarioInfoString(request.jobId, request.scenarioPath, request.inputFiles,
                                                            request.outputFolder, request.workDir, request.runArgument,
                                                            json) &&
           ControllerCSWrapper::CreateJsonFile(json, file);
}

long RunScenario(const std::wstring& input, std::wstring& output) {
    Request request;
    if (!ReadRequest(input, request)) {
        output = L"The run request cannot be read.";
        return failed;
    }
    UseNativePaths(request);
    if (!MakeDirectory(request.workDir)) {
        output = L"The work directory " + request.workDir + L" cannot be created.";
        return failed;
    }
    const std::wstring requestFile = request.workDir + L"/run_scenario_info.json";
    if (!WriteRequest(request, requestFile)) {
        output = L"The run request cannot be written to " + requestFile + L".";
        return failed;
    }
    std::wstring problem;
    const std::uint64_t process = StartProgram(request.scenarioPath, requestFile, request.workDir, problem);
    if (process == 0) {
        output = L"The program " + request.scenarioPath + L" cannot be started: " + problem + L".";
        return failed;
    }
    output = controller_plugins::AnswerWithProcessHandle(process);
    return 0;
}

} // namespace

/// Scenarios look for the file "killprocess" themselves: there is nothing to do for "CancelScenario".
void GetFunctions(std::vector<std::string>* functionNames) {
    functionNames->emplace_back("RunScenario");
}

long CallFunction(const std::string& functionName, const std::wstring& input, std::wstring& output,
                  long (*)(const std::wstring&, const std::wstring&)) {
    return functionName == "RunScenario" ? RunScenario(input, output) : failed;
}
