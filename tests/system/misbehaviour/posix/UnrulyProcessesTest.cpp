#include "kit/processes/ScenarioRunFixture.h"
#include "kit/processes/ScenarioTraces.h"

#include <chrono>

#include "platform/processes/Orphans.h"
#include "platform/processes/Waiting.h"

namespace {

class UnrulyProcessesTest : public ScenarioRunFixture {
protected:
    /// Kills the remaining processes of the scenario, except those with a cleared environment, and returns their
    /// number.
    std::size_t EndLeftovers() const {
        return platform::KillProcessesByEnvironment(run_protocol::runInfoVariable,
                                                    {run_protocol::RunInfoPath(job.workDir)});
    }
};

} // namespace

TEST_F(UnrulyProcessesTest, ADaemonIsEndedWithItsScenario) {
    Run("leave daemon\nbe ready\nexit 0");
    const auto processes = OpenNotedProcesses(job.workDir);
    EXPECT_EQ(processes.size(), 2U);
    AwaitDeathOf(processes);
}

TEST_F(UnrulyProcessesTest, ProcessesThatKeepStartingOthersAreEnded) {
    settings.graceSeconds = 0;
    StartAndAwaitReady("be lowest\nignore requests\nbe ready\nfork up to 2000");
    RequestStop();
    EXPECT_EQ(AwaitEnd(), 0);
    EXPECT_EQ(EndLeftovers(), 0U);
}

TEST_F(UnrulyProcessesTest, ProcessesThatAreNeverWhereTheyWereSeenAreEnded) {
    Run("hop 20\nleave orphans 100\nexit 0");
    EXPECT_TRUE(Result().succeeded);
    EXPECT_EQ(EndLeftovers(), 0U);
}

TEST_F(UnrulyProcessesTest, ProcessesThatLostTheirParentsAndEndedDoNotPileUp) {
    Run("leave orphans 300\nwait for no zombies\nexit 0");
    EXPECT_TRUE(Result().succeeded);
}
