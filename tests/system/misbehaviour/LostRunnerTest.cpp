#include "kit/processes/HostProcessFixture.h"
#include "kit/processes/ScenarioTraces.h"

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "kit/OtherProcesses.h"

namespace {

/// Scenarios that kill their runner, as a user or the out-of-memory killer might.
class LostRunnerTest : public HostProcessFixture {
protected:
    /// Runs a scenario with several processes that then performs `misdeed`. Returns the job's id when the job has
    /// failed and all of its processes have ended.
    std::wstring RunFamily(const std::string& misdeed) {
        StartHost();
        TestClient frontEnd(endpointName);
        const std::string steps = "ignore requests\nhave family\nbe ready\nwait for file go\n" + misdeed + "\nwait";
        const std::wstring id = frontEnd.Enqueue(JobsFile(steps)).at(0).id;
        frontEnd.AwaitStatus(id, JobStatus::Running);
        AwaitFile(WorkDirOf(id), L"ready");
        const auto family = OpenNotedProcesses(WorkDirOf(id));
        EXPECT_EQ(family.size(), 5U);
        WriteTextFile(WorkDirOf(id) + L"\\go", "");
        frontEnd.AwaitStatus(id, JobStatus::Failed);
        AwaitDeathOf(family);
        return id;
    }
};

} // namespace

TEST_F(LostRunnerTest, AScenarioThatKillsItsRunnerEndsWithAllItStarted) {
    RunFamily("kill ancestors 1");
}

TEST_F(LostRunnerTest, AScenarioThatKillsAllProcessesOfItsRunnerEndsWithAllItStarted) {
    RunFamily("kill ancestors 2");
}
