#pragma once

#include <functional>
#include <string>

#include "kit/processes/ScenarioRunFixture.h"

/// The function module "slurm" with one job. By default the programs of Slurm are replaced by the script "fake_slurm",
/// which runs jobs on this machine.
class SlurmFixture : public ScenarioRunFixture {
protected:
    SlurmFixture();
    ~SlurmFixture() override;

    /// What happens to the next job; see the script.
    void UseMode(const std::string& mode) const;
    /// The arguments of all calls of a program of Slurm, one call a line.
    std::string CallsOf(const std::wstring& program) const;
    /// The process on the node, started with this name of a job.
    platform::OwnedHandle NodeProcess() const;
    /// The name of the last job.
    std::wstring JobName() const;
    /// Polls until a condition holds for which there is no event.
    static void Await(const std::string& what, const std::function<bool()>& condition);
    /// True if a scenario with the step "live in" this directory runs.
    bool HasLifeIn(const std::wstring& lifeDirectory) const;

    const std::wstring state;

private:
    std::wstring pathBefore;
};
