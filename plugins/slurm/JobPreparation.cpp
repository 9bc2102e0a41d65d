#include "slurm/JobPreparation.h"

#include "formats/RunProtocol.h"
#include "formats/ScenarioManifest.h"
#include "platform/files/NativePath.h"
#include "services/Settings.h"

namespace slurm {
namespace {

/// Slurm waits 30 s, its KillWait, before it kills a job that was asked to end; the rest is for Slurm itself.
constexpr std::chrono::seconds clusterGrace{35};

bool ChooseOptions(const std::wstring& scenario, const settings::Settings& settings, SlurmOptions& options,
                   std::wstring& problem) {
    scenario_manifest::ScenarioManifest manifest;
    if (!scenario_manifest::ReadFor(scenario, manifest, problem)) {
        return false;
    }
    options = Merged(settings.slurm, manifest.slurm);
    const std::wstring contradiction = FindContradiction(options, manifest.timeLimitSeconds);
    if (contradiction.empty()) {
        return true;
    }
    problem = L"The manifest of " + platform::ToNativeText(scenario) + L" contradicts the settings " +
              platform::ToNativeText(settings.file) + L": " + contradiction;
    return false;
}

std::vector<std::wstring> NodeCommand(const WaiterJob& job, const settings::Settings& settings,
                                      const std::wstring& settingsFile) {
    return {platform::ToNativeText(WaiterProgram()),
            nodeOption,
            job.name,
            workDirOption,
            platform::ToNativeText(job.workDir),
            runnerOption,
            platform::ToNativeText(settings.scenarioRunner),
            settingsOption,
            platform::ToNativeText(settingsFile),
            lostAfterOption,
            std::to_wstring(settings.slurm.lostAfterSeconds)};
}

} // namespace

bool PrepareJob(const std::wstring& workDir, const std::wstring& name, WaiterJob& job, std::wstring& problem) {
    const auto settings = settings::Current();
    run_protocol::RunScenarioInfo info;
    if (!run_protocol::ReadRunScenarioInfoFile(platform::ResolveAgainst(workDir, run_protocol::runInfoFileName), info,
                                               problem)) {
        return false;
    }
    job.jobId = info.jobId;
    if (!ChooseOptions(info.scenarioPath, *settings, job.options, problem)) {
        return false;
    }
    const std::wstring settingsFile = platform::ResolveAgainst(workDir, run_protocol::settingsCopyName);
    // A copy, because the nodes need not have the file of the settings.
    if (!run_protocol::WriteFile(settings::Serialize(*settings), settingsFile)) {
        problem = L"The settings cannot be written to " + platform::ToNativeText(settingsFile) + L".";
        return false;
    }
    job.workDir = workDir;
    job.name = name;
    job.command = NodeCommand(job, *settings, settingsFile);
    job.grace = std::chrono::seconds(settings->cancelGraceSeconds) + clusterGrace;
    job.lostAfter = std::chrono::seconds(settings->slurm.lostAfterSeconds);
    return true;
}

} // namespace slurm
