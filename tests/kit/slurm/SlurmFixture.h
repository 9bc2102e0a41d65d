#pragma once

#include <functional>
#include <string>

#include "kit/processes/ScenarioRunFixture.h"
#include "slurm/WaiterProgram.h"

/// The function module "slurm" with one job.
class SlurmFixture : public ScenarioRunFixture {
protected:
    SlurmFixture();

    /// After this time the job is lost. Short only where a test waits for that, because machines may be slow.
    void UseLostAfter(int seconds, const std::string& options = "");

    /// Waits for the end of the process that stands for the job.
    slurm::WaiterExit AwaitWaiter() { return static_cast<slurm::WaiterExit>(AwaitEnd()); }
    /// The first message of the result.
    std::string Message() const;
    /// The name of the last attempt to run the job.
    std::wstring JobName() const;

    /// A step by which scenarios show that they live.
    std::string LiveStep() const;
    /// True while a scenario with that step lives.
    bool HasLife() const;

    /// Polls until a condition holds for which there is no event.
    static void Await(const std::string& what, const std::function<bool()>& condition);
};
