#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// The cluster on this machine that the script "tools/slurm_lab" has started. Its directory is in the environment
/// variable SLURM_LAB.
class SlurmLab {
public:
    /// From now on programs of Slurm that this process starts use the cluster.
    SlurmLab();
    ~SlurmLab();
    SlurmLab(const SlurmLab&) = delete;
    SlurmLab& operator=(const SlurmLab&) = delete;

    static bool IsThere();

    /// Calls the script with this command.
    void Do(const std::vector<std::wstring>& command) const;
    /// The same, with a directory that the started node does not have.
    void StartNodeWithout(const std::wstring& node, const std::wstring& directory) const;

    /// The names of the jobs that wait or run.
    static std::vector<std::wstring> Jobs();
    /// True if the cluster still has a job of this name.
    static bool Has(const std::wstring& name);
    /// Waits until a node can take jobs.
    static void AwaitIdle(const std::wstring& node);
    /// The process of Slurm on the node that has started the job of this name.
    static std::uint32_t StepProcessOf(const std::wstring& name);

private:
    const std::wstring directory;
};
