/// Exports of a function module that is written in C. They convert the host's objects to the types of
/// `c_function_module.h`.

#include "controller_plugins/c_function_module.h"
#include "controller_plugins/function_module.h"

#include <algorithm>
#include <iterator>

#include "formats/RunProtocol.h"
#include "platform/files/NativePath.h"
#include "text/Text.h"

namespace {

using run_protocol::RunScenarioInfo;

constexpr long badRequest = 2;
constexpr long noWorkDirectory = 3;
constexpr long unknownFunction = 1;

std::string NativeUtf8(const std::wstring& path) {
    return text::ToUtf8(platform::ToNativeText(path));
}

/// Owns the texts of a request, and the view of them that the C code gets.
class Request {
public:
    explicit Request(const RunScenarioInfo& info)
        : jobId(text::ToUtf8(info.jobId)), scenarioPath(NativeUtf8(info.scenarioPath)),
          outputFolder(NativeUtf8(info.outputFolder)), workDir(NativeUtf8(info.workDir)),
          runArgument(text::ToUtf8(info.runArgument)) {
        std::transform(info.inputFiles.begin(), info.inputFiles.end(), std::back_inserter(inputFiles), NativeUtf8);
        std::transform(inputFiles.begin(), inputFiles.end(), std::back_inserter(inputs),
                       [](const std::string& file) { return file.c_str(); });
    }

    controller_run_request View() const {
        return {jobId.c_str(),        scenarioPath.c_str(), inputs.data(),      inputs.size(),
                outputFolder.c_str(), workDir.c_str(),      runArgument.c_str()};
    }

private:
    std::string jobId;
    std::string scenarioPath;
    std::vector<std::string> inputFiles;
    std::vector<const char*> inputs;
    std::string outputFolder;
    std::string workDir;
    std::string runArgument;
};

bool PrepareWorkDirectory(const RunScenarioInfo& info, std::wstring& problem) {
    std::wstring obstacle;
    const std::wstring path = platform::ResolveAgainst(info.workDir, run_protocol::runInfoFileName);
    if (!run_protocol::MakeWorkDirectory(info.workDir, obstacle)) {
        problem = L"The work directory " + platform::ToNativeText(info.workDir) + L" " + obstacle + L".";
    } else if (!run_protocol::WriteFile(run_protocol::SerializeRunScenarioInfo(info), path)) {
        problem = L"The run request cannot be written to " + platform::ToNativeText(path) + L".";
    }
    return problem.empty();
}

std::wstring TextOf(const controller_run_answer& answer) {
    return answer.process_handle != 0 ? controller_plugins::AnswerWithProcessHandle(answer.process_handle)
                                      : controller_plugins::AnswerWithProcessId(answer.process_id);
}

std::wstring ReasonOf(const controller_run_answer& answer) {
    const auto* const end = std::find(std::begin(answer.reason), std::end(answer.reason), '\0');
    return text::FromUtf8(std::string(std::begin(answer.reason), end));
}

long RunScenario(const std::wstring& input, std::wstring& output) {
    RunScenarioInfo info;
    if (!run_protocol::ParseRunScenarioInfo(input, info, output)) {
        return badRequest;
    }
    if (!PrepareWorkDirectory(info, output)) {
        return noWorkDirectory;
    }
    const Request request(info);
    const controller_run_request view = request.View();
    controller_run_answer answer{};
    const long result = controller_run_scenario(&view, &answer);
    output = result == 0 ? TextOf(answer) : ReasonOf(answer);
    return result;
}

} // namespace

void GetFunctions(std::vector<std::string>* functionNames) {
    functionNames->insert(functionNames->end(), {"RunScenario", "CancelScenario", "Terminate"});
}

long CallFunction(const std::string& functionName, const std::wstring& input, std::wstring& output,
                  long (*)(const std::wstring&, const std::wstring&)) {
    if (functionName == "RunScenario") {
        return RunScenario(input, output);
    }
    if (functionName == "CancelScenario") {
        return controller_cancel_scenario(text::ToUtf8(input).c_str());
    }
    if (functionName != "Terminate") {
        return unknownFunction;
    }
    controller_terminate();
    return 0;
}
