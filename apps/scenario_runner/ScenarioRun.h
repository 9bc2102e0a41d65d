#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "formats/RunProtocol.h"
#include "formats/ScenarioManifest.h"
#include "platform/files/Directory.h"
#include "platform/processes/ProcessTree.h"
#include "platform/processes/StopSignal.h"
#include "scenario_runner/OutputCapture.h"
#include "scenario_runner/RunRecord.h"
#include "scenario_runner/ScenarioCommand.h"
#include "services/Settings.h"

namespace scenario_runner {

/// Exit codes of the runner's process. The result file reports the scenario's own outcome.
enum class RunnerExit : std::int32_t {
    /// The scenario ran, and there is a result.
    Done = 0,
    WrongArguments = 2,
    /// The scenario could not be started; the result says why.
    NotStarted = 3,
    /// The result could not be written.
    NoResult = 4,
    /// The host ended, and the scenario was ended with it.
    HostEnded = 5,
    /// The scenario crashed, or exceeded its time limit; there is a result.
    Crashed = run_protocol::crashedExitCode,
    TimedOut = run_protocol::timedOutExitCode
};

/// One run of a scenario, from its request to its result.
class ScenarioRun {
public:
    /// `directory` is the pinned work directory: the runner accesses all its files through it, even if the scenario
    /// renames or replaces the directory. `owners` are the processes whose end ends the run.
    ScenarioRun(std::wstring workDir, const platform::DirectoryHandle& directory, const settings::Settings& settings,
                std::vector<void*> owners, const platform::StopSignal& stopSignal);

    /// Returns when all processes of the scenario have ended.
    RunnerExit Run();

private:
    [[nodiscard]] bool Prepare(std::wstring& problem);
    /// Reads the manifest. Unpacks a package into `packageDirectory`.
    [[nodiscard]] bool ReadScenario(std::wstring& packageDirectory, std::wstring& problem);
    void ReadContext();
    /// Records what the run begins with. Returns false if it must end.
    [[nodiscard]] bool BeginRecord();
    /// Ends the run with the results of an earlier job, or with a failure; nothing if the scenario must run.
    std::optional<RunnerExit> Reuse();
    bool MustEnd() const;
    RunnerExit ConcludeUnstarted();
    RunnerExit StartAndWatch();
    /// Limits what the scenario's processes may use. Where that is impossible, the logs say why.
    void Limit(platform::ProcessTree& tree, OutputCapture& output) const;
    RunnerExit Conclude(struct RunFacts facts);
    RunnerExit FailToStart(const std::wstring& problem) const;
    std::wstring InDirectory(const std::wstring& name) const;
    std::wstring ReadStopReason() const;

    std::wstring workDir;
    const platform::DirectoryHandle& directory;
    const settings::Settings& settings;
    std::vector<void*> owners;
    const platform::StopSignal& stopSignal;
    run_protocol::RunScenarioInfo info;
    provenance::RunContext context;
    scenario_manifest::ScenarioManifest manifest;
    ScenarioCommand command;
    /// Without a value, the origin of the results is not recorded.
    std::optional<RunRecord> record;
};

} // namespace scenario_runner
