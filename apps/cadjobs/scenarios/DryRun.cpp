#include "cadjobs/scenarios/DryRun.h"

#include "front_end/commands/CommandFailure.h"
#include "front_end/jobs/JobFiles.h"
#include "local_process/RunnerStart.h"
#include "local_process/WorkDirectory.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "platform/processes/Waiting.h"
#include "services/Settings.h"

namespace front_end {
namespace {

constexpr std::size_t shownLog = 4096;

platform::OwnedHandle Start(const run_protocol::RunScenarioInfo& info) {
    const auto settings = settings::Current();
    const local_process::RunnerProgram program{settings->scenarioRunner, {}, L"Check the setting \"scenarioRunner\""};
    platform::OwnedHandle runner;
    std::wstring problem;
    if (!local_process::PrepareWorkDirectory(info, problem) ||
        !local_process::StartRunner(info, *settings, program, runner, problem)) {
        throw CommandFailure{ExitCode::Usage, problem};
    }
    return runner;
}

/// The runner stops the scenario within the grace time of the settings.
[[noreturn]] void Interrupt(const std::wstring& workDirectory, void* runner) {
    (void)platform::CreateEmptyFileIn(workDirectory, run_protocol::killFileName);
    (void)platform::WaitForAny({runner}, std::nullopt);
    throw CommandFailure{ExitCode::Interrupted, {}};
}

void AwaitEnd(const CommandContext& context, const std::wstring& workDirectory, void* runner) {
    std::vector<void*> handles = {runner};
    if (context.stop != nullptr) {
        handles.push_back(context.stop);
    }
    if (platform::WaitForAny(handles, std::nullopt) != 0U) {
        Interrupt(workDirectory, runner);
    }
}

} // namespace

DryRunResult RunOnce(const CommandContext& context, const ScratchDirectory& scratch, const DryRunRequest& request) {
    const std::wstring workDirectory = scratch / L"work";
    const platform::OwnedHandle runner = Start(
        {L"1", request.scenarioPath, request.inputFiles, request.outputDirectory, workDirectory, request.runArgument});
    AwaitEnd(context, workDirectory, runner.Get());
    DryRunResult result;
    ResultReport report = ReportIn(workDirectory, result.hasSucceeded);
    result.messages = std::move(report.messages);
    result.outputFiles = std::move(report.outputFiles);
    // A scenario that has printed nothing has no log.
    (void)platform::ReadFileEnd(platform::ResolveAgainst(workDirectory, run_protocol::logFileName), shownLog,
                                result.log);
    return result;
}

} // namespace front_end
