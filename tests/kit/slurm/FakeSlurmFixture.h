#pragma once

#include "kit/slurm/SlurmFixture.h"

/// The script "fake_slurm", which runs jobs on this machine, in place of the programs of Slurm.
class FakeSlurmFixture : public SlurmFixture {
protected:
    FakeSlurmFixture();
    ~FakeSlurmFixture() override;

    /// What happens to the next job; see the script.
    void UseMode(const std::string& mode) const;
    /// The arguments of all calls of a program of Slurm, one call a line.
    std::string CallsOf(const std::wstring& program) const;
    /// The process of the last job on the node.
    platform::OwnedHandle NodeProcess() const;

    const std::wstring state;

private:
    std::wstring pathBefore;
};
