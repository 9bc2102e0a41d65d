#include "local_process/RunnerServer.h"

#include <utility>

#include "platform/files/NativePath.h"
#include "platform/system/Installation.h"
#include "text/Text.h"

namespace local_process {
namespace {

constexpr std::chrono::seconds longestBetweenJobs{1};
/// The program file, the limits and the priority that a process inherits at its start may have changed since then.
constexpr std::chrono::seconds longestLife{10};
/// A machine on which it fails may not allow it at all.
constexpr std::chrono::seconds retryInterval{10};
/// Room for the variable that each job sets. No system call takes a longer path.
constexpr std::size_t longestPath = 4096;

} // namespace

RunnerServer::RunnerServer() : ownRunner(platform::InstalledProgram(L"scenario_runner", platform::OwnDirectory())) {}

platform::OwnedHandle RunnerServer::StartRunner(const run_protocol::RunScenarioInfo& info,
                                                const settings::Settings& settings, const RunnerProgram& program) {
    const std::lock_guard lock(mutex);
    const Clock::time_point now = Clock::now();
    const bool isSoon = now - std::exchange(lastJob, now) < longestBetweenJobs;
    if (!isSoon || now < retryTime || !CanServe(settings, program)) {
        return platform::OwnedHandle();
    }
    const bool isStarted = IsUsable(settings) || StartServer(settings, program);
    platform::OwnedHandle runner =
        isStarted ? server.Fork(text::ToUtf8(platform::ToNativeText(info.workDir))) : platform::OwnedHandle();
    if (!runner) {
        retryTime = now + retryInterval;
    }
    return runner;
}

/// A runner gets a copy of settings that cannot be read now in its work directory.
bool RunnerServer::CanServe(const settings::Settings& settings, const RunnerProgram& program) const {
    return program.path == ownRunner && program.arguments.empty() && CanReadSettings(settings);
}

bool RunnerServer::IsUsable(const settings::Settings& settings) const {
    return server.IsRunning() && settings.file == settingsOfServer && Clock::now() - startOfServer < longestLife;
}

bool RunnerServer::StartServer(const settings::Settings& settings, const RunnerProgram& program) {
    const platform::OwnedHandle host = platform::OpenSelf();
    if (!host) {
        return false;
    }
    settingsOfServer = settings.file;
    startOfServer = Clock::now();
    platform::ProcessStart start = CommonStart(program, settings.file, host);
    start.environment = {{run_protocol::runInfoVariable, std::wstring(longestPath, L'-')}};
    start.arguments.emplace_back(L"--serve");
    return static_cast<bool>(server.Start(std::move(start)));
}

void RunnerServer::End() {
    const std::lock_guard lock(mutex);
    server.End();
}

} // namespace local_process
