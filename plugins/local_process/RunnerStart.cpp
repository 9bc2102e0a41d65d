#include "local_process/RunnerStart.h"

#include "platform/files/NativePath.h"
#include "platform/processes/Process.h"

namespace local_process {
namespace {

bool Fail(const RunnerProgram& program, const std::wstring& why, std::wstring& problem) {
    problem = L"The program that runs scenarios, " + platform::ToNativeText(program.path) + L", cannot be started: " +
              why + L".";
    return false;
}

/// Empty unless the program file is missing or not executable.
std::wstring Advice(const RunnerProgram& program) {
    return platform::IsProgramFile(program.path) ? std::wstring() : L". " + program.advice;
}

/// Chooses the settings file for the runner. If that file is broken or missing, writes a copy of the settings in force
/// into the work directory and chooses the copy.
bool ChooseSettingsFile(const run_protocol::RunScenarioInfo& info, const settings::Settings& settings,
                        std::wstring& file, std::wstring& problem) {
    file = settings.file;
    if (CanReadSettings(settings)) {
        return true;
    }
    file = platform::ResolveAgainst(info.workDir, run_protocol::settingsCopyName);
    if (run_protocol::WriteFile(settings::Serialize(settings), file)) {
        return true;
    }
    problem = L"The settings cannot be written to " + platform::ToNativeText(file) + L".";
    return false;
}

} // namespace

bool CanReadSettings(const settings::Settings& settings) {
    return settings.file.empty() || settings::Problem().empty();
}

platform::ProcessStart CommonStart(const RunnerProgram& program, const std::wstring& settingsFile,
                                   const platform::OwnedHandle& host) {
    platform::ProcessStart start;
    start.program = program.path;
    start.arguments = {L"--host", platform::InheritedHandleText(host.Get())};
    if (!settingsFile.empty()) {
        start.arguments.insert(start.arguments.end(), {L"--settings", platform::ToNativeText(settingsFile)});
    }
    start.arguments.insert(start.arguments.end(), program.arguments.begin(), program.arguments.end());
    start.currentDirectory = platform::ParentDirectory(program.path);
    start.detached = true;
    start.inherited = {host.Get()};
    return start;
}

bool StartRunner(const run_protocol::RunScenarioInfo& info, const settings::Settings& settings,
                 const RunnerProgram& program, platform::OwnedHandle& runner, std::wstring& problem) {
    const platform::OwnedHandle host = platform::OpenSelf();
    if (!host) {
        return Fail(program, L"the system has no more handles", problem);
    }
    std::wstring settingsFile;
    if (!ChooseSettingsFile(info, settings, settingsFile, problem)) {
        return false;
    }
    platform::ProcessStart start = CommonStart(program, settingsFile, host);
    start.arguments.insert(start.arguments.end(), {L"--work-dir", platform::ToNativeText(info.workDir)});
    start.environment = {{run_protocol::runInfoVariable, run_protocol::RunInfoPath(info.workDir)}};
    const platform::Error result = platform::StartProcess(start, runner);
    return result || Fail(program, result.Text() + Advice(program), problem);
}

} // namespace local_process
