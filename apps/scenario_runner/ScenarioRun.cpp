#include "scenario_runner/ScenarioRun.h"

#include <utility>

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "formats/LogTail.h"
#include "formats/ResultFile.h"
#include "formats/ScenarioPackage.h"
#include "platform/files/Directory.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "platform/files/RemoveTree.h"
#include "platform/processes/Process.h"
#include "platform/system/Environment.h"
#include "scenario_runner/RunResult.h"
#include "scenario_runner/Supervisor.h"
#include "text/Text.h"

namespace scenario_runner {
namespace {

constexpr const wchar_t* packageDirectoryName = L"package";
/// Timeout for the last output after all processes have ended.
constexpr std::chrono::seconds outputTimeout{10};

ScenarioEnvironment ThisMachine() {
    return {platform::FindRunnable, platform::Exists, platform::GetEnvironment};
}

RunLimits LimitsOf(const scenario_manifest::ScenarioManifest& manifest, const settings::Settings& settings) {
    RunLimits limits;
    if (manifest.timeLimitSeconds > 0) {
        limits.timeLimit = std::chrono::seconds(manifest.timeLimitSeconds);
    }
    limits.graceTime = std::chrono::seconds(settings.cancelGraceSeconds);
    return limits;
}

/// A scenario that wrote a result has ended on its own, whatever its exit code is.
RunnerExit ExitOf(const RunFacts& facts) {
    if (facts.ending == RunExitReason::TimeLimit) {
        return RunnerExit::TimedOut;
    }
    const bool hasCrashed = facts.ending == RunExitReason::Exited && !facts.ownResult && facts.exitCode &&
                            platform::IsCrash(*facts.exitCode);
    return hasCrashed ? RunnerExit::Crashed : RunnerExit::Done;
}

} // namespace

ScenarioRun::ScenarioRun(std::wstring jobWorkDir, const platform::DirectoryHandle& pinnedDirectory,
                         const settings::Settings& usedSettings, std::vector<void*> watchedOwners,
                         const platform::StopSignal& signal)
    : workDir(std::move(jobWorkDir)), directory(pinnedDirectory), settings(usedSettings),
      owners(std::move(watchedOwners)), stopSignal(signal) {}

RunnerExit ScenarioRun::Run() {
    std::wstring problem;
    if (!Prepare(problem)) {
        return FailToStart(problem);
    }
    if (!BeginRecord()) {
        return ConcludeUnstarted();
    }
    const std::optional<RunnerExit> early = Reuse();
    return early ? *early : StartAndWatch();
}

std::wstring ScenarioRun::InDirectory(const std::wstring& name) const {
    return platform::ResolveAgainst(directory.Path(), name);
}

bool ScenarioRun::Prepare(std::wstring& problem) {
    if (!run_protocol::RemoveResult(directory.Path())) {
        problem = L"The result of an earlier run in " + platform::ToNativeText(workDir) + L" cannot be removed.";
        return false;
    }
    // A report of an earlier run; without one there is nothing to remove.
    (void)platform::RemoveFile(InDirectory(provenance::usedToolsFileName));
    const std::wstring runInfoPath = platform::ResolveAgainst(workDir, run_protocol::runInfoFileName);
    ScenarioPaths paths;
    if (!run_protocol::ReadRunScenarioInfoFile(runInfoPath, info, problem) ||
        !ReadScenario(paths.packageDirectory, problem)) {
        return false;
    }
    ReadContext();
    paths.scenarioPath = info.scenarioPath;
    paths.runInfoPath = run_protocol::RunInfoPath(workDir);
    return ChooseCommand(settings, manifest, paths, ThisMachine(), command, problem);
}

void ScenarioRun::ReadContext() {
    const std::wstring path = InDirectory(provenance::contextFileName);
    std::wstring problem;
    if (platform::Exists(path) && !provenance::ReadContext(path, context, problem)) {
        ControllerCSWrapper::WriteWarnLog(L"The attempt, the limits and the earlier results are unknown to job " +
                                          info.jobId + L": " + problem);
    }
}

bool ScenarioRun::ReadScenario(std::wstring& packageDirectory, std::wstring& problem) {
    if (!scenario_manifest::IsPackage(info.scenarioPath)) {
        return scenario_manifest::ReadFor(info.scenarioPath, manifest, problem);
    }
    scenario_package::Package package;
    if (!package.Open(info.scenarioPath, problem) || !scenario_manifest::ReadFrom(package, manifest, problem)) {
        return false;
    }
    // An absolute path by name, because it is passed to the scenario.
    packageDirectory = platform::ResolveAgainst(workDir, packageDirectoryName);
    // On failure, unpacking reports an error: it requires a new directory.
    (void)platform::RemoveTree(packageDirectory);
    return package.Unpack(packageDirectory, problem);
}

bool ScenarioRun::BeginRecord() {
    // Without inputs the output directory is the user's, which may hold anything.
    if (!settings.provenance || info.inputFiles.empty()) {
        return true;
    }
    try {
        record.emplace(info, context, directory.Path(), [this] { return MustEnd(); }).Begin(settings, command);
    } catch (const Stopped&) {
        return false;
    } catch (const std::exception& failure) {
        record.reset();
        ControllerCSWrapper::WriteWarnLog(L"The origin of the results of job " + info.jobId + L" is not recorded: " +
                                          text::FromUtf8(failure.what()));
    }
    return true;
}

std::optional<RunnerExit> ScenarioRun::Reuse() {
    try {
        const auto result = record ? record->Reuse() : std::nullopt;
        if (!result) {
            return std::nullopt;
        }
        return run_protocol::WriteResult(directory.Path(), *result) ? RunnerExit::Done : RunnerExit::NoResult;
    } catch (const Stopped&) {
        return ConcludeUnstarted();
    } catch (const std::exception& failure) {
        return FailToStart(text::FromUtf8(failure.what()) + L".");
    }
}

bool ScenarioRun::MustEnd() const {
    return HasLostOwner(owners) || IsStopRequested(stopSignal, InDirectory(run_protocol::killFileName));
}

RunnerExit ScenarioRun::ConcludeUnstarted() {
    RunFacts facts;
    facts.ending = HasLostOwner(owners) ? RunExitReason::HostEnded : RunExitReason::StopRequested;
    record.reset();
    return Conclude(std::move(facts));
}

RunnerExit ScenarioRun::StartAndWatch() {
    const auto logLimit = static_cast<std::size_t>(settings.scenarioLogLimitBytes);
    OutputCapture output(InDirectory(run_protocol::logFileName), logLimit);
    if (const platform::Error result = output.Open(); !result) {
        return FailToStart(L"The log of the scenario in " + platform::ToNativeText(workDir) + L" cannot be written: " +
                           result.Text() + L".");
    }
    platform::ProcessTree tree;
    Limit(tree, output);
    platform::ProcessStart start;
    start.program = command.program;
    start.arguments = command.arguments;
    start.environment = command.environment;
    start.currentDirectory = workDir;
    start.output = output.WriteEnd();
    const StopPolicy plan(LimitsOf(manifest, settings), std::chrono::steady_clock::now());
    const platform::Error result = tree.Start(start);
    output.Start();
    if (!result) {
        return FailToStart(L"The program " + platform::ToNativeText(command.program) + L" cannot be started: " +
                           result.Text() + L".");
    }
    RunFacts facts;
    facts.ending = Supervisor(tree, owners, directory.Path(), stopSignal, &output).Run(plan);
    facts.exitCode = tree.RootExitCode();
    facts.exceededMemoryMiB = tree.HasExceededMemory() ? context.memoryLimitMiB : 0;
    facts.apiProblem = command.apiProblem;
    output.Finish(outputTimeout);
    facts.lastOutput = run_protocol::ReadLogTail(InDirectory(run_protocol::logFileName));
    return Conclude(std::move(facts));
}

void ScenarioRun::Limit(platform::ProcessTree& tree, OutputCapture& output) const {
    constexpr int bitsOfMiB = 20;
    const platform::ResourceLimits limits{context.memoryLimitMiB << bitsOfMiB, context.cpuLimitPercent};
    if (limits == platform::ResourceLimits()) {
        return;
    }
    if (std::wstring reason; !tree.Limit(limits, reason)) {
        const std::wstring problem =
            L"The limits of memory and processor time are not enforced on this machine: " + reason + L".";
        output.Note(problem);
        ControllerCSWrapper::WriteWarnLog(L"Job " + info.jobId + L": " + problem);
    }
}

RunnerExit ScenarioRun::Conclude(RunFacts facts) {
    if (facts.ending == RunExitReason::HostEnded) {
        return RunnerExit::HostEnded;
    }
    facts.jobId = info.jobId;
    facts.successExitCodes = manifest.successExitCodes;
    facts.timeLimitSeconds = manifest.timeLimitSeconds;
    facts.ownResult = ReadOwnResult(directory.Path());
    facts.stopReason = ReadStopReason();
    facts.hasUnusableResult = !facts.ownResult && run_protocol::ResultExists(directory.Path());
    const std::optional<run_protocol::RunScenarioResult> result = ResultOf(facts);
    if (result && !run_protocol::WriteResult(directory.Path(), *result)) {
        return RunnerExit::NoResult;
    }
    if (record) {
        record->End(result ? *result : *facts.ownResult);
    }
    return ExitOf(facts);
}

/// Written by the host into the request to stop; a request of others is empty.
std::wstring ScenarioRun::ReadStopReason() const {
    constexpr std::size_t longest = 4096;
    std::string text;
    // Without a request there is no reason.
    (void)platform::ReadFile(InDirectory(run_protocol::killFileName), longest, text);
    return text::FromUtf8(text);
}

RunnerExit ScenarioRun::FailToStart(const std::wstring& problem) const {
    const auto result = run_protocol::FailedResult(info.jobId, problem);
    return run_protocol::WriteResult(directory.Path(), result) ? RunnerExit::NotStarted : RunnerExit::NoResult;
}

} // namespace scenario_runner
