#include "kit/processes/ScenarioRunFixture.h"
#include "kit/processes/ScenarioTraces.h"

#include "formats/RunProtocol.h"
#include "kit/OtherProcesses.h"

namespace {

/// Processes that leave their console, group or job object, as far as the system allows.
class DetachedProcessesTest : public ScenarioRunFixture {
protected:
    std::vector<platform::OwnedHandle> StartWithDetachedChildren() {
        settings.graceSeconds = 0;
        StartAndAwaitReady("ignore requests\nleave detached children\nbe ready\nwait");
        return OpenNotedProcesses(job.workDir);
    }
};

} // namespace

TEST_F(DetachedProcessesTest, EndWithTheScenarioThatIsStopped) {
    const auto processes = StartWithDetachedChildren();
    // Itself and three children; the fourth only if the system lets it leave the job object.
    EXPECT_GE(processes.size(), 4U);
    RequestStop();
    EXPECT_EQ(AwaitEnd(), 0);
    AwaitDeathOf(processes);
}

TEST_F(DetachedProcessesTest, EndWithTheRunnerThatIsEndedByForce) {
    const auto processes = StartWithDetachedChildren();
    test_support::KillProcess(runner.Get());
    AwaitDeathOf(processes);
}

TEST_F(DetachedProcessesTest, AnAccessViolationIsNamedByItsCode) {
    Run("violate access", run_protocol::crashedExitCode);
    EXPECT_FALSE(Result().succeeded);
    EXPECT_TRUE(FirstMessage().starts_with(L"The scenario ended with exit code -1073741819 (0xc0000005)"));
}
