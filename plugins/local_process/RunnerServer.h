#pragma once

#include <chrono>
#include <mutex>
#include <string>

#include "local_process/RunnerStart.h"
#include "platform/processes/ForkServer.h"

namespace local_process {

/// Starts the runners of jobs that follow one another within a second as copies of one that waits, which is faster than
/// to start the program for each. The waiting process ends a second after the last of them. Linux only. Threads: any.
class RunnerServer {
public:
    RunnerServer();

    /// The handle of the job's runner. Null if the runner has to be started for this job alone.
    [[nodiscard]] platform::OwnedHandle StartRunner(const run_protocol::RunScenarioInfo& info,
                                                    const settings::Settings& settings, const RunnerProgram& program);

    void End();

private:
    using Clock = std::chrono::steady_clock;

    bool CanServe(const settings::Settings& settings, const RunnerProgram& program) const;
    bool IsUsable(const settings::Settings& settings) const;
    [[nodiscard]] bool StartServer(const settings::Settings& settings, const RunnerProgram& program);

    /// Another program, named by the settings, need not be able to serve.
    const std::wstring ownRunner;
    std::mutex mutex;
    platform::ForkServer server;
    std::wstring settingsOfServer;
    Clock::time_point startOfServer;
    Clock::time_point lastJob;
    Clock::time_point retryTime;
};

} // namespace local_process
