#include "kit/processes/HostProcessFixture.h"
#include "kit/processes/ScenarioTraces.h"

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "kit/OtherProcesses.h"

namespace {

/// Scenarios that kill their runner, as a user or the out-of-memory killer might.
class LostRunnerTest : public HostProcessFixture {
protected:
    /// Runs a scenario with several processes that then performs `misdeed`. Returns when the job has the status `end`
    /// and all of its processes have ended.
    void RunFamily(const std::string& misdeed, const Scheduling& scheduling = {}, JobStatus end = JobStatus::Failed) {
        StartHost();
        TestClient frontEnd(endpointName);
        const std::string steps = "ignore requests\nhave family\nbe ready\nwait for file go\n" + misdeed + "\nwait";
        WriteTextFile(directory / L"family.rb", steps);
        ScheduledRequest request({}, scheduling);
        request.scenario.id = directory / L"family.rb";
        request.inputFileSets = {{directory / L"inputs.txt"}};
        request.outputDir = directory / L"out";
        const std::wstring id = frontEnd.Enqueue(request).jobIds.at(0).id;
        frontEnd.AwaitStatus(id, JobStatus::Running);
        AwaitFile(WorkDirOf(id), L"ready");
        const auto family = OpenNotedProcesses(WorkDirOf(id));
        EXPECT_EQ(family.size(), 5U);
        WriteTextFile(WorkDirOf(id) + L"\\go", "");
        frontEnd.AwaitStatus(id, end);
        AwaitDeathOf(family);
    }
};

} // namespace

TEST_F(LostRunnerTest, AScenarioThatKillsItsRunnerEndsWithAllItStarted) {
    RunFamily("kill ancestors 1");
}

TEST_F(LostRunnerTest, AScenarioThatKillsAllProcessesOfItsRunnerEndsWithAllItStarted) {
    RunFamily("kill ancestors 2");
}

/// The next attempt must not run beside what is left of this one.
TEST_F(LostRunnerTest, NothingOfAnAttemptIsLeftWhenItsJobIsQueuedAgain) {
    Scheduling later;
    later.retries = 1;
    later.retryDelay = 3600;
    RunFamily("kill ancestors 2", later, JobStatus::Queued);
}
