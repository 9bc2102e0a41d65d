/// A function module in C++: the scenario file is the program to run.

#include "controller_plugins/function_module.h"

#include "formats/RunProtocol.h"
#include "platform/files/NativePath.h"
#include "start_program.h"
#include "text/Text.h"

namespace {

constexpr long failed = 1;

std::string NativeUtf8(const std::wstring& path) {
    return text::ToUtf8(platform::ToNativeText(path));
}

long RunScenario(const std::wstring& input, std::wstring& output) {
    run_protocol::RunScenarioInfo request;
    if (!run_protocol::ParseRunScenarioInfo(input, request, output)) {
        return failed;
    }
    std::wstring obstacle;
    if (!run_protocol::MakeWorkDirectory(request.workDir, obstacle)) {
        output = L"The work directory " + platform::ToNativeText(request.workDir) + L" " + obstacle + L".";
        return failed;
    }
    const std::wstring requestFile = run_protocol::RunInfoPath(request.workDir);
    if (!run_protocol::WriteFile(input, requestFile)) {
        output = L"The run request cannot be written to " + requestFile + L".";
        return failed;
    }
    std::string problem;
    const std::uint64_t process =
        StartProgram(NativeUtf8(request.scenarioPath), text::ToUtf8(requestFile), NativeUtf8(request.workDir), problem);
    if (process == 0) {
        output = L"The program " + platform::ToNativeText(request.scenarioPath) + L" cannot be started: " +
                 text::FromUtf8(problem) + L".";
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
