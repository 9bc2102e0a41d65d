#include "kit/processes/HostProcessFixture.h"
#include "kit/processes/ScenarioTraces.h"

using LostHostTest = HostProcessFixture;

TEST_F(LostHostTest, AScenarioThatKillsItsRunnerAndItsHostIsEndedByTheNextHost) {
    StartHost();
    std::wstring id;
    {
        TestClient frontEnd(endpointName);
        id = frontEnd.Enqueue(JobsFile("have family\nbe ready\nwait for file go\nkill ancestors 3\nwait")).at(0).id;
        frontEnd.AwaitStatus(id, JobStatus::Running);
    }
    AwaitFile(WorkDirOf(id), L"ready");
    const auto family = OpenNotedProcesses(WorkDirOf(id));
    ASSERT_EQ(family.size(), 5U);
    WriteTextFile(WorkDirOf(id) + L"\\go", "");
    AwaitHostEnd();
    StartHost();
    AwaitDeathOf(family);
}
