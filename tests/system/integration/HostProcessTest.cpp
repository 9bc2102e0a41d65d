#include "kit/processes/HostProcessFixture.h"
#include "kit/processes/ScenarioTraces.h"

#include "CommonControllerLib/CLIPresenter.h"
#include "kit/OtherProcesses.h"
#include "kit/ZipWriter.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "platform/system/Environment.h"
#include "text/Text.h"

#include <algorithm>

namespace {

using test_support::ZipEntry;

class HostProcessTest : public HostProcessFixture {
protected:
    /// A scenario whose child processes ignore requests to stop, in a package with its program.
    std::wstring PackagedFamily() const {
        const std::string program = "bin/test_scenario" + text::ToUtf8(platform::programExtension);
        ZipEntry manifest;
        manifest.name = "manifest.json";
        manifest.content = R"({"version":1,"displayName":"Family","executable":")" + program + "\"}";
        ZipEntry executable;
        executable.name = program;
        executable.content = ReadTextFile(test_support::ProgramPath(L"test_scenario"));
        executable.deflated = false;
        ZipEntry steps;
        steps.name = "bin/steps.txt";
        steps.content = "ignore requests\nhave family\nbe ready\nwait";
        WriteTextFile(directory / L"family.esa", test_support::MakeZip({manifest, executable, steps}));
        return JobsFileFor("family.esa", 1);
    }

    /// The work directory of a job exists once it runs.
    void AwaitReady(TestClient& frontEnd, const std::wstring& id) const {
        frontEnd.AwaitStatus(id, JobStatus::Running);
        AwaitFile(WorkDirOf(id), L"ready");
    }

    /// Starts a job with several processes, and returns its id and these processes.
    std::wstring StartFamily(TestClient& frontEnd) {
        const std::wstring id = frontEnd.Enqueue(PackagedFamily()).at(0).id;
        AwaitReady(frontEnd, id);
        family = OpenNotedProcesses(WorkDirOf(id));
        EXPECT_EQ(family.size(), 5U);
        return id;
    }

    std::vector<platform::OwnedHandle> family;
};

TEST_F(HostProcessTest, TheJobsOfAJobsFileRunToTheirResults) {
    StartHost();
    TestClient frontEnd(endpointName);
    const auto jobs = frontEnd.Enqueue(JobsFile("print hello\nexit 0", 2));
    ASSERT_EQ(jobs.size(), 2U);
    EXPECT_EQ(jobs[0].seqId, 1);
    EXPECT_EQ(jobs[1].seqId, 2);
    const JobStatusInfo first = frontEnd.AwaitStatus(jobs[0].id, JobStatus::Success);
    EXPECT_EQ(first.progress, 100);
    EXPECT_EQ(first.workDir, WorkDirOf(jobs[0].id));
    frontEnd.AwaitStatus(jobs[1].id, JobStatus::Success);
    EXPECT_EQ(ReadTextFile(WorkDirOf(jobs[1].id) + L"\\scenario.log"), "hello\n");
}

TEST_F(HostProcessTest, AStartInTheBackgroundNamesWhatJobsWouldFailFor) {
    std::string settings = UsualSettings("job_list.json");
    settings.insert(1, R"("scenarioRunner":"no_runner","functionModules":["no_module.so"],)");
    WriteSettings(settings);
    const test_support::Ending start = test_support::RunToEnd(Host({L"--background"}));
    EXPECT_EQ(start.exitCode, 0) << start.output;
    for (const wchar_t* const file : {L"no_module.so", L"no_runner"}) {
        EXPECT_NE(start.output.find(text::ToUtf8(platform::ToNativeText(directory / file))), std::string::npos)
            << start.output;
    }
    TestClient frontEnd(endpointName);
    const auto jobs = frontEnd.Enqueue(JobsFile("exit 0"));
    const JobStatusInfo job = frontEnd.AwaitStatus(jobs.at(0).id, JobStatus::Failed);
    EXPECT_NE(ReadTextFile(job.workDir + L"\\run_scenario_result.json").find("no_module.so cannot be loaded: "),
              std::string::npos);
    frontEnd.Terminate();
    AwaitNoHost();
}

TEST_F(HostProcessTest, TheCommandLinesPresenterIsToldTheStatusOfJobs) {
    StartHost();
    TestClient frontEnd(endpointName);
    const auto jobs = frontEnd.Enqueue(JobsFile("exit 3"));
    frontEnd.AwaitStatus(jobs.at(0).id, JobStatus::Failed);
    CLIPresenter presenter(L"client:" + endpointName,
                           platform::ResolveAgainst(platform::ProgramDirectory(),
                                                    std::wstring(L"local_socket") + platform::moduleExtension));
    presenter.CheckJobStatus({L"1", L"2"}, directory / L"status.txt");
    presenter.LeaveEventTransmitter(frontEnd.Transmitter());
    const std::string lineEnd(platform::lineEnd);
    EXPECT_EQ(ReadTextFile(directory / L"status.txt"), "1,Failed" + lineEnd + "2,Unknown" + lineEnd);
}

TEST_F(HostProcessTest, ALongJobIsCancelledWithItsProcessesAndTheNextOneRuns) {
    StartHost();
    TestClient frontEnd(endpointName);
    const std::wstring longJob = StartFamily(frontEnd);
    const auto next = frontEnd.Enqueue(JobsFile("exit 0"));
    frontEnd.Cancel(longJob);
    frontEnd.AwaitStatus(longJob, JobStatus::Canceled);
    frontEnd.AwaitStatus(next.at(0).id, JobStatus::Success);
    AwaitDeathOf(family);
}

TEST_F(HostProcessTest, AsManyJobsRunAtATimeAsTheSettingsSay) {
    std::string settings = UsualSettings("job_list.json");
    settings.insert(1, R"("parallelJobs":2,)");
    WriteSettings(settings);
    StartHost();
    TestClient frontEnd(endpointName);
    const auto jobs = frontEnd.Enqueue(JobsFile("be ready\nwait", 3));
    ASSERT_EQ(jobs.size(), 3U);
    AwaitReady(frontEnd, jobs[0].id);
    AwaitReady(frontEnd, jobs[1].id);
    EXPECT_EQ(frontEnd.Jobs().at(2).status, JobStatus::Queued);
    frontEnd.Cancel(jobs[0].id);
    frontEnd.AwaitStatus(jobs[0].id, JobStatus::Canceled);
    AwaitReady(frontEnd, jobs[2].id);
    EXPECT_EQ(frontEnd.Jobs().at(1).status, JobStatus::Running);
}

TEST_F(HostProcessTest, AJobThatHasEndedIsDeletedWithItsWorkDirectory) {
    StartHost();
    TestClient frontEnd(endpointName);
    const std::wstring id = frontEnd.Enqueue(JobsFile("exit 0")).at(0).id;
    frontEnd.AwaitStatus(id, JobStatus::Success);
    ASSERT_TRUE(platform::Exists(WorkDirOf(id)));
    EXPECT_EQ(frontEnd.Delete({id}), std::vector{id});
    EXPECT_FALSE(platform::Exists(WorkDirOf(id)));
    EXPECT_TRUE(frontEnd.Jobs().empty());
}

TEST_F(HostProcessTest, AskedToEndItEndsItsScenariosFirst) {
    StartHost();
    TestClient frontEnd(endpointName);
    const std::wstring id = StartFamily(frontEnd);
    frontEnd.Terminate();
    EXPECT_EQ(AwaitHostEnd(), 0);
    frontEnd.AwaitStatus(id, JobStatus::Canceled);
    AwaitDeathOf(family);
}

TEST_F(HostProcessTest, WhenItIsKilledItsScenariosEndAndAnotherTakesItsPlace) {
    StartHost();
    {
        TestClient frontEnd(endpointName);
        StartFamily(frontEnd);
    }
    test_support::KillProcess(host.Get());
    AwaitHostEnd();
    AwaitDeathOf(family);
    StartHost();
    const auto jobs = TestClient(endpointName).Jobs();
    ASSERT_EQ(jobs.size(), 1U);
    EXPECT_EQ(jobs[0].status, JobStatus::Canceled);
}

TEST_F(HostProcessTest, ASecondHostIsRefusedAndTheFirstGoesOn) {
    StartHost();
    const auto second = test_support::RunToEnd(Host({}));
    EXPECT_EQ(second.exitCode, 4);
    EXPECT_TRUE(second.output.starts_with("controller_host: another host is running for the job list "))
        << second.output;
    EXPECT_EQ(std::count(second.output.begin(), second.output.end(), '\n'), 1) << second.output;
    TestClient frontEnd(endpointName);
    EXPECT_TRUE(frontEnd.Jobs().empty());
}

TEST_F(HostProcessTest, AHostWithAnotherJobListAndTheSameNameIsRefused) {
    StartHost();
    WriteSettings(UsualSettings("other_list.json"));
    const auto second = test_support::RunToEnd(Host({}));
    EXPECT_EQ(second.exitCode, 1);
    EXPECT_NE(second.output.find("front ends cannot be reached"), std::string::npos) << second.output;
}

TEST_F(HostProcessTest, SettingsThatCannotBeReadAreRefusedWithTheirPlace) {
    WriteSettings("{\"version\":1,\n\"workDirectory\":7}");
    for (const std::vector<std::wstring>& arguments : {std::vector<std::wstring>{}, {L"--background"}}) {
        const auto ending = test_support::RunToEnd(Host(arguments));
        EXPECT_EQ(ending.exitCode, 1);
        EXPECT_TRUE(ending.output.starts_with("controller_host: ")) << ending.output;
        EXPECT_NE(ending.output.find("settings.json"), std::string::npos) << ending.output;
        EXPECT_NE(ending.output.find("workDirectory"), std::string::npos) << ending.output;
    }
}

TEST_F(HostProcessTest, InTheBackgroundItOutlivesItsStarter) {
    EXPECT_EQ(test_support::RunToEnd(Host({L"--background"})).exitCode, 0);
    TestClient frontEnd(endpointName);
    const auto jobs = frontEnd.Enqueue(JobsFile("exit 0"));
    frontEnd.AwaitStatus(jobs.at(0).id, JobStatus::Success);
    EXPECT_EQ(test_support::RunToEnd(Host({L"--background"})).exitCode, 0);
    EXPECT_EQ(frontEnd.Jobs().size(), 1U);
    frontEnd.Terminate();
    AwaitNoHost();
}

} // namespace
