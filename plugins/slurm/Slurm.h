#pragma once

#include <mutex>

#include "local_process/LocalProcess.h"
#include "platform/system/OwnedHandle.h"

namespace slurm {

/// The functions of this module. Each scenario runs on a node of a Slurm cluster; on this machine a program of its own
/// waits for it (`slurm_waiter`). Differs from `LocalProcess` in the program that it starts, and has one function more:
///
/// - "EndLostRuns" cancels the jobs that an earlier host has left on the cluster, and does not wait for that. A host
/// calls
///   it once, when it starts.
class Slurm : public local_process::LocalProcess {
public:
    Slurm();
    ~Slurm() override = default;
    Slurm(const Slurm&) = delete;
    Slurm& operator=(const Slurm&) = delete;

    std::vector<std::string> FunctionNames() const override;
    local_process::ModuleResult Call(const std::string& functionName, const std::wstring& input,
                                     std::wstring& output) override;

private:
    local_process::RunnerProgram ChooseRunner(const run_protocol::RunScenarioInfo& info,
                                              const settings::Settings& settings) const override;
    local_process::ModuleResult EndLostRuns();

    /// Part of the names of this host's jobs.
    std::wstring host;
    /// The program that cancels the jobs of earlier hosts. Its handle is closed after its end, which reaps it.
    std::mutex mutex;
    platform::OwnedHandle cancelling;
};

} // namespace slurm
