#include "HostProcessFixture.h"
#include "ScenarioTraces.h"

#include "platform/FileSystem.h"
#include "support/OtherProcesses.h"

namespace {

/// Scenarios that end their runner by force, as a user or a system short of memory may.
class LostRunnerTest : public HostProcessFixture {
protected:
    /// Enqueues a scenario with a family of processes that then does what `misdeed` says; the job's id.
    std::wstring StartFamily(FrontEnd& frontEnd, const std::string& misdeed) {
        const std::string steps = "ignore requests\nhave family\nbe ready\n" + misdeed + "\nwait";
        return frontEnd.Enqueue(JobsFile(steps)).at(0).id;
    }
};

} // namespace

TEST_F(LostRunnerTest, AScenarioWhoseRunnerIsKilledEndsWithAllItStarted) {
    StartHost();
    FrontEnd frontEnd(meetingPlace);
    const std::wstring id = StartFamily(frontEnd, "wait for file go\nkill ancestors 1");
    frontEnd.AwaitStatus(id, JobStatus::Running);
    AwaitFile(WorkDirOf(id), L"ready");
    const auto family = OpenNotedProcesses(WorkDirOf(id));
    ASSERT_EQ(family.size(), 5U);
    WriteTextFile(WorkDirOf(id) + L"\\go", "");
    frontEnd.AwaitStatus(id, JobStatus::Failed);
    AwaitDeathOf(family);
}
