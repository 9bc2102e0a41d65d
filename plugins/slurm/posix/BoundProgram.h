#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace slurm {

/// Replaces this process by `program` (an absolute path), which gets SIGTERM as soon as the process `parent` ends.
/// Returns only on failure: if that process is not this one's parent (any more) or the program cannot be run.
void BecomeBoundProgram(std::uint32_t parent, const std::wstring& program, const std::vector<std::wstring>& arguments);

/// The process that started this one.
std::uint32_t ParentProcessNumber();

/// Ends a process at once.
void KillProcess(void* process);

/// The name of this machine in its network.
std::wstring MachineName();

/// The variables of this process that change what the programs of Slurm do: a job must not depend on where the host was
/// started, for instance inside another job. SLURM_CONF, which names the cluster, is not among them.
std::vector<std::wstring> SlurmVariables();

} // namespace slurm
