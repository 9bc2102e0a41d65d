#include <csignal>

#include "kit/OtherProcesses.h"
#include "kit/TestClient.h"
#include "kit/TestProcess.h"
#include "kit/processes/HostProcessFixture.h"
#include "kit/processes/ScenarioTraces.h"
#include "kit/slurm/SlurmLab.h"
#include "platform/files/NativePath.h"
#include "text/Text.h"

namespace {

class ClusterHostTest : public HostProcessFixture {
protected:
    void SetUp() override {
        if (!SlurmLab::IsThere()) {
            GTEST_SKIP() << "no cluster: ./run test slurm starts one";
        }
        UseOptions("");
    }

    /// `options`: JSON texts with commas between.
    void UseOptions(const std::string& options) const {
        std::string all = UsualSettings("job_list.json");
        all.pop_back();
        const std::string module = text::ToUtf8(platform::ToNativeText(test_support::ProgramPath(L"slurm.so")));
        WriteSettings(all + R"(,"functionModules":[")" + module + R"("],"slurm":{"options":[)" + options + "]}}");
    }

    void KillHost() {
        test_support::KillProcess(host.Get());
        EXPECT_TRUE(test_support::WaitUntilSignalled(host.Get()));
        host.Reset();
    }

    static void AwaitNoJob() {
        Await("the end of all jobs of the cluster", [] { return SlurmLab::Jobs().empty(); });
    }

    const SlurmLab lab;
};

} // namespace

TEST_F(ClusterHostTest, JobsOfAHostRunOnTheCluster) {
    StartHost();
    TestClient frontEnd(endpointName);
    for (const JobIdInfo& job : frontEnd.Enqueue(JobsFile("exit 0", 3))) {
        frontEnd.AwaitStatus(job.id, JobStatus::Success);
    }
    frontEnd.Terminate();
    EXPECT_EQ(AwaitHostEnd(), 0);
}

TEST_F(ClusterHostTest, TheJobsOfAKilledHostLeaveTheCluster) {
    StartHost();
    TestClient frontEnd(endpointName);
    const std::wstring id = frontEnd.Enqueue(JobsFile("ignore requests\nbe ready\nwait")).at(0).id;
    frontEnd.AwaitStatus(id, JobStatus::Running);
    AwaitFile(WorkDirOf(id), L"ready");
    const auto processes = OpenNotedProcesses(WorkDirOf(id));
    KillHost();
    AwaitDeathOf(processes);
    AwaitNoJob();
}

TEST_F(ClusterHostTest, TheNextHostCancelsWhatAKilledMachineLeftOnTheCluster) {
    UseOptions(R"("--begin=now+1hour")");
    StartHost();
    {
        TestClient frontEnd(endpointName);
        frontEnd.Enqueue(JobsFile("exit 0"));
        Await("the job", [] { return SlurmLab::Jobs().size() == 1; });
    }
    // The waiter and srun die with the host: nobody is left to ask the cluster.
    test_support::EndAllStarted();
    host.Reset();
    ASSERT_EQ(SlurmLab::Jobs().size(), 1U);
    UseOptions("");
    StartHost();
    AwaitNoJob();
    TestClient frontEnd(endpointName);
    const std::wstring id = frontEnd.Enqueue(JobsFile("exit 0")).at(0).id;
    frontEnd.AwaitStatus(id, JobStatus::Success);
    frontEnd.Terminate();
    EXPECT_EQ(AwaitHostEnd(), 0);
}
