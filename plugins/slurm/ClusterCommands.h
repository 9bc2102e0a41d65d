#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "formats/SlurmOptions.h"
#include "platform/processes/Process.h"
#include "platform/system/OwnedHandle.h"

/// The programs of Slurm. They are found in PATH, and started without a shell.
namespace slurm {

/// The arguments of `srun` for one job: one task on one node, in `directory`.
std::vector<std::wstring> SrunArguments(const SlurmOptions& options, const std::wstring& name,
                                        const std::wstring& directory, const std::vector<std::wstring>& command);

/// The start of a program of Slurm without the variables that would change what it does.
platform::ProcessStart ClusterCommand(const std::wstring& program, std::vector<std::wstring> arguments);

/// Cancels all jobs with this name. Waits until Slurm has the request, at most `timeout`; false if it does not have
/// it.
bool CancelJobs(const std::wstring& name, std::chrono::milliseconds timeout);

/// The names of this user's jobs that wait or run; nothing if the cluster does not say.
[[nodiscard]] std::optional<std::vector<std::wstring>> ListJobs(std::chrono::milliseconds timeout);

/// Cancels the jobs of one name again and again, without waiting.
class RepeatedCancel {
public:
    explicit RepeatedCancel(std::wstring jobName) : name(std::move(jobName)) {}

    /// Does nothing while the last request is not handled.
    void Ask();

private:
    std::wstring name;
    platform::OwnedHandle process;
};

} // namespace slurm
