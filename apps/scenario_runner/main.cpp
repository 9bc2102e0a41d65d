/// Runs one scenario for a job: starts it, logs its output, watches for stop requests, the time limit and the end of
/// the host, ends all its processes, and ensures that a result exists.

#include "formats/ResultFile.h"
#include "formats/RunProtocol.h"
#include "platform/files/Directory.h"
#include "platform/processes/ForkServer.h"
#include "platform/processes/Orphans.h"
#include "platform/processes/Process.h"
#include "platform/system/Clock.h"
#include "platform/system/Environment.h"
#include "platform/system/Machine.h"
#include "platform/system/SharedLibrary.h"
#include "platform/terminal/Console.h"
#include "scenario_runner/RunResult.h"
#include "scenario_runner/RunnerArguments.h"
#include "scenario_runner/ScenarioRun.h"
#include "services/Settings.h"
#include "text/Text.h"

namespace {

using scenario_runner::RunnerArguments;
using scenario_runner::RunnerExit;

void Say(const std::wstring& text) {
    platform::WriteErrorOutput("scenario_runner: " + text::ToUtf8(text) + "\n");
}

/// The given settings file must be usable: other settings might select another interpreter.
bool HasSettings(std::wstring& problem) {
    problem = settings::Problem();
    return problem.empty();
}

RunnerExit Refuse(const platform::DirectoryHandle& directory, const std::wstring& problem) {
    Say(problem);
    const auto result = run_protocol::FailedResult(L"", problem);
    return run_protocol::WriteResult(directory.Path(), result) ? RunnerExit::NotStarted : RunnerExit::NoResult;
}

RunnerExit RunScenario(const RunnerArguments& arguments, const platform::DirectoryHandle& directory,
                       const std::vector<void*>& owners) {
    std::wstring problem;
    if (!HasSettings(problem)) {
        return Refuse(directory, problem);
    }
    try {
        const platform::StopSignal stopSignal;
        const auto settings = settings::Current();
        return scenario_runner::ScenarioRun(arguments.workDir, directory, *settings, owners, stopSignal).Run();
    } catch (const std::exception& failure) {
        // Lack of threads, handles or memory.
        return Refuse(directory, L"The scenario cannot be run: " + text::FromUtf8(failure.what()) + L".");
    }
}

/// Called in the supervising process when the runner was killed. Keeps the scenario's own result if there is one.
RunnerExit ConcludeFor(const platform::WorkerExit& end, const platform::DirectoryHandle& directory) {
    const auto result =
        run_protocol::FailedResult(L"", L"The scenario was ended because the program that runs it was ended with " +
                                            platform::ExitCodeText(end.exitCode) + L".");
    const bool hasResult =
        scenario_runner::ReadOwnResult(directory.Path()) || run_protocol::WriteResult(directory.Path(), result);
    return hasResult ? RunnerExit::Done : RunnerExit::NoResult;
}

RunnerExit RunUnderSubreaper(const RunnerArguments& arguments, const platform::DirectoryHandle& directory, void* host) {
    const platform::WorkerExit end = platform::RunUnderSubreaper([&](void* subreaper) {
        std::vector<void*> owners{host, subreaper};
        std::erase(owners, nullptr);
        return static_cast<std::int32_t>(RunScenario(arguments, directory, owners));
    });
    return end.wasSignaled ? ConcludeFor(end, directory) : static_cast<RunnerExit>(end.exitCode);
}

/// What runners read that does not depend on their jobs. A copy reads only those settings again that have changed.
void ReadAhead() {
    (void)settings::Current();
    (void)platform::UtcTimestamp(platform::Now());
    (void)platform::AccountName();
}

/// Waits for the work directory of a job. Returns false in the server, when it has to end; true in a copy, which runs
/// the job like a runner that was started for it.
bool WaitForJob(RunnerArguments& arguments, void* host) {
    constexpr std::chrono::seconds longestRest{1};
    const platform::OwnedHandle line = platform::TakeInheritedHandle(arguments.serve);
    ReadAhead();
    const auto workDir = platform::ServeForks(line, host, longestRest, [](const std::string& request) {
        return platform::OverwriteStartVariable(run_protocol::runInfoVariable,
                                                run_protocol::RunInfoPath(text::FromUtf8(request)));
    });
    arguments.workDir = text::FromUtf8(workDir.value_or(std::string()));
    return workDir.has_value();
}

RunnerExit Run(const std::vector<std::wstring>& words) {
    RunnerArguments arguments;
    std::wstring problem;
    if (!scenario_runner::ParseRunnerArguments(words, arguments, problem)) {
        Say(problem);
        return RunnerExit::WrongArguments;
    }
    const platform::OwnedHandle host = platform::TakeInheritedHandle(arguments.host);
    settings::UseFile(arguments.settingsFile);
    if (!arguments.serve.empty() && !WaitForJob(arguments, host.Get())) {
        return RunnerExit::Done;
    }
    platform::DirectoryHandle directory;
    if (const platform::Error result = directory.Open(arguments.workDir); !result) {
        Say(L"The work directory " + arguments.workDir + L" cannot be used: " + result.Text());
        return RunnerExit::NoResult;
    }
    if (!arguments.host.empty() && !host) {
        return Refuse(directory, L"The scenario was not started: \"" + arguments.host +
                                     L"\" is no handle of the controller's process.");
    }
    return RunUnderSubreaper(arguments, directory, host.Get());
}

} // namespace

int main(int count, char** values) {
    platform::HardenLibrarySearch();
    platform::PrepareConsole();
    platform::IgnoreFileSizeSignal();
    try {
        return static_cast<int>(Run(platform::ProgramArguments(count, values)));
    } catch (const std::exception& failure) {
        Say(L"failed: " + text::FromUtf8(failure.what()));
        return static_cast<int>(RunnerExit::NoResult);
    }
}
