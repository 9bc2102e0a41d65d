#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "formats/RunProtocol.h"
#include "formats/ScenarioManifest.h"
#include "platform/files/DirectoryHandle.h"
#include "platform/processes/StopSignal.h"
#include "scenario_runner/ScenarioCommand.h"
#include "services/Settings.h"

namespace scenario_runner {

/// What the runner's own process returns. What became of the scenario stands in the result file.
enum class RunnerExit : std::int32_t {
    /// The scenario ran, and there is a result.
    Done = 0,
    WrongArguments = 2,
    /// The scenario could not be started; the result says why.
    NotStarted = 3,
    /// There is no result because none could be written.
    NoResult = 4,
    /// The host ended, and the scenario with it.
    HostEnded = 5
};

/// One run of a scenario from its request to its result.
class ScenarioRun {
public:
    /// `directory` is the work directory held fast: all files of it that the runner reads and writes are met through
    /// it, whatever the scenario makes of its name. `owners`: the processes whose end ends the run.
    ScenarioRun(std::wstring workDir, const platform::DirectoryHandle& directory, const settings::Settings& settings,
                std::vector<void*> owners, const platform::StopSignal& stopSignal);

    /// Returns when no process of the scenario is left.
    RunnerExit Run();

private:
    [[nodiscard]] bool Prepare(std::wstring& problem);
    [[nodiscard]] bool Unpack(std::wstring& packageDirectory, std::wstring& problem) const;
    RunnerExit StartAndWatch();
    RunnerExit Conclude(struct RunFacts facts) const;
    RunnerExit FailToStart(const std::wstring& problem) const;
    std::wstring InDirectory(const std::wstring& name) const;

    std::wstring workDir;
    const platform::DirectoryHandle& directory;
    const settings::Settings& settings;
    std::vector<void*> owners;
    const platform::StopSignal& stopSignal;
    run_protocol::RunScenarioInfo info;
    scenario_manifest::ScenarioManifest manifest;
    ScenarioCommand command;
};

} // namespace scenario_runner
