#include "HostProcessFixture.h"
#include "ScenarioTraces.h"

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "platform/files/FileSystem.h"
#include "support/OtherProcesses.h"

namespace {

/// Scenarios that end their runner by force, as a user or a system short of memory may.
class LostRunnerTest : public HostProcessFixture {
protected:
    /// Runs a scenario with a family of processes that then does what `misdeed` says, and returns when its job has
    /// failed and none of its processes is left; the job's id.
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
