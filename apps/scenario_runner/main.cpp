/// Runs one scenario for a job: starts it, keeps what it prints, watches for the request to stop, for the time limit
/// and for the end of the host, ends all its processes, and sees to it that there is a result.

#include "companion/Settings.h"
#include "platform/Console.h"
#include "platform/FileSizeLimit.h"
#include "platform/Process.h"
#include "platform/ProgramArguments.h"
#include "platform/SharedLibrary.h"
#include "platform/Text.h"
#include "scenario_runner/ResultFile.h"
#include "scenario_runner/RunResult.h"
#include "scenario_runner/RunnerArguments.h"
#include "scenario_runner/ScenarioRun.h"

namespace {

using scenario_runner::RunnerArguments;
using scenario_runner::RunnerExit;

void Say(const std::wstring& text) {
    platform::WriteErrorOutput("scenario_runner: " + platform::ToUtf8(text) + "\n");
}

/// The settings that the runner was told to use must be usable: others might run another interpreter.
bool UseSettings(const RunnerArguments& arguments, std::wstring& problem) {
    settings::UseFile(arguments.settingsFile);
    problem = settings::Problem();
    return problem.empty();
}

RunnerExit Refuse(const RunnerArguments& arguments, const std::wstring& problem) {
    Say(problem);
    const scenario_runner::ResultFile file(arguments.workDir);
    return file.Write(scenario_runner::FailedResult(L"", problem)) ? RunnerExit::NotStarted : RunnerExit::NoResult;
}

RunnerExit Run(const std::vector<std::wstring>& words) {
    RunnerArguments arguments;
    std::wstring problem;
    if (!scenario_runner::ParseRunnerArguments(words, arguments, problem)) {
        Say(problem);
        return RunnerExit::WrongArguments;
    }
    const platform::OwnedHandle host = platform::TakeInheritedHandle(arguments.host);
    if (!arguments.host.empty() && !host) {
        return Refuse(arguments, L"The scenario was not started: \"" + arguments.host +
                                     L"\" is no handle of the controller's process.");
    }
    if (!UseSettings(arguments, problem)) {
        return Refuse(arguments, problem);
    }
    const platform::StopSignal stopSignal;
    const auto settings = settings::Current();
    return scenario_runner::ScenarioRun(arguments.workDir, *settings, host.Get(), stopSignal).Run();
}

} // namespace

int main(int count, char** values) {
    platform::NarrowModuleSearch();
    platform::PrepareConsole();
    platform::FailBeyondFileSizeLimit();
    try {
        return static_cast<int>(Run(platform::ProgramArguments(count, values)));
    } catch (const std::exception& failure) {
        Say(L"failed: " + platform::FromUtf8(failure.what()));
        return static_cast<int>(RunnerExit::NoResult);
    }
}
