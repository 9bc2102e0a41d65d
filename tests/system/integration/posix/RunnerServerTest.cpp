#include "kit/processes/ScenarioRunFixture.h"

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>

#include <unistd.h>

#include "kit/Deadline.h"
#include "kit/TestProcess.h"
#include "platform/files/NativePath.h"
#include "platform/processes/Orphans.h"
#include "platform/processes/Process.h"
#include "platform/system/Sleep.h"
#include "text/Text.h"

namespace {

/// The runners of jobs that follow one another are copies of a server, which is a child of this process like them.
class RunnerServerTest : public ScenarioRunFixture {
protected:
    static std::string ProcessFile(pid_t process, const char* name) {
        std::ifstream file("/proc/" + std::to_string(process) + "/" + name);
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }

    static bool IsOfServer(pid_t process) {
        return ProcessFile(process, "cmdline").find("--serve") != std::string::npos;
    }

    static std::vector<pid_t> Children() {
        const std::string own = std::to_string(getpid());
        std::vector<pid_t> children;
        for (const auto& task : std::filesystem::directory_iterator("/proc/self/task")) {
            std::ifstream list(task.path() / "children");
            for (pid_t child = 0; list >> child;) {
                children.push_back(child);
            }
        }
        return children;
    }

    pid_t RunnerNumber() const { return static_cast<pid_t>(platform::ProcessNumber(runner.Get())); }

    /// 0 if no server runs.
    pid_t Server() const {
        for (const pid_t child : Children()) {
            if (child != RunnerNumber() && IsOfServer(child)) {
                return child;
            }
        }
        return 0;
    }

    void UseNextJob() {
        job.jobId = std::to_wstring(++lastJob);
        job.workDir = directory / L"work\\" + job.jobId;
    }

    /// Leaves a job running that was started by the server, however long a start takes here.
    void StartServedJob(const std::string& steps) {
        const test_support::Deadline deadline("a runner of the server");
        for (;;) {
            UseNextJob();
            Run("exit 0");
            UseNextJob();
            StartAndAwaitReady(steps);
            if (HasFatalFailure() || IsOfServer(RunnerNumber())) {
                return;
            }
            RequestStop();
            AwaitEnd();
        }
    }

    void RunServedJob() {
        StartServedJob("be ready\nwait for file go\nexit 0");
        WriteTextFile(InWorkDir(L"go"), "");
        ASSERT_EQ(AwaitEnd(), 0);
    }

    /// It may have ended if this test was halted for a second.
    pid_t ServerAfterAJob() {
        pid_t server = 0;
        while (server == 0 && !HasFatalFailure()) {
            RunServedJob();
            server = Server();
        }
        return server;
    }

    int lastJob = 0;
};

/// All entries of the environment that have this name.
std::vector<std::string> Entries(const std::string& environment, const std::string& name) {
    std::vector<std::string> found;
    std::istringstream entries(environment);
    for (std::string entry; std::getline(entries, entry, '\0');) {
        if (entry.starts_with(name + '=')) {
            found.push_back(entry);
        }
    }
    return found;
}

} // namespace

TEST_F(RunnerServerTest, ARunnerOfTheServerIsFoundByItsRunRequestLikeAnyOther) {
    StartServedJob("be ready\nwait");
    const std::string request = text::ToUtf8(run_protocol::RunInfoPath(job.workDir));
    EXPECT_EQ(Entries(ProcessFile(RunnerNumber(), "environ"), "CONTROLLER_RUN_INFO"),
              std::vector{"CONTROLLER_RUN_INFO=" + request});
    platform::KillProcessesByEnvironment(run_protocol::runInfoVariable, {run_protocol::RunInfoPath(job.workDir)});
    EXPECT_FALSE(platform::IsProcessRunning(runner.Get()));
}

TEST_F(RunnerServerTest, ARunnerOfTheServerIsAChildOfTheHostInASessionOfItsOwn) {
    StartServedJob("be ready\nwait");
    const std::vector<pid_t> children = Children();
    EXPECT_EQ(std::count(children.begin(), children.end(), RunnerNumber()), 1);
    EXPECT_EQ(getsid(RunnerNumber()), RunnerNumber());
    const auto limits = [](pid_t process) { return ProcessFile(process, "limits"); };
    EXPECT_EQ(limits(RunnerNumber()), limits(getpid()));
}

TEST_F(RunnerServerTest, ARunnerOfTheServerHasNoDescriptorOfIt) {
    StartServedJob("be ready\nwait");
    for (const auto& entry : std::filesystem::directory_iterator("/proc/" + std::to_string(RunnerNumber()) + "/fd")) {
        const std::string target = std::filesystem::read_symlink(entry.path());
        EXPECT_FALSE(target.starts_with("socket:")) << target;
    }
}

TEST_F(RunnerServerTest, AJobOfTheServerCanBeCancelled) {
    StartServedJob("be ready\nwait for request\nexit 0");
    EXPECT_EQ(Call("CancelScenario", job.jobId), 0);
    EXPECT_EQ(AwaitEnd(), 0);
    EXPECT_EQ(FirstMessage(), L"The scenario was stopped because it was asked to.");
}

TEST_F(RunnerServerTest, AJobAfterTheServerWasKilledRuns) {
    const pid_t server = ServerAfterAJob();
    kill(server, SIGKILL);
    UseNextJob();
    Run("exit 0");
    EXPECT_TRUE(Result().succeeded);
    EXPECT_NE(Server(), server);
}

TEST_F(RunnerServerTest, AJobAfterTheServerWasStoppedRunsAndTheServerIsGone) {
    const pid_t server = ServerAfterAJob();
    kill(server, SIGSTOP);
    UseNextJob();
    Run("exit 0");
    EXPECT_TRUE(Result().succeeded);
    // A stopped process cannot end by itself.
    EXPECT_EQ(Call("Terminate", L""), 0);
    EXPECT_NE(Server(), server);
}

TEST_F(RunnerServerTest, ASettingThatChangesBetweenTwoJobsHoldsForTheSecond) {
    RunServedJob();
    settings.stepsInterpreter = test_support::ProgramPath(L"no_such_interpreter");
    UseNextJob();
    UseSteps("exit 0");
    ASSERT_EQ(Start(), 0);
    AwaitEnd();
    EXPECT_FALSE(Result().succeeded);
    EXPECT_NE(FirstMessage().find(L"no_such_interpreter"), std::wstring::npos);
}

TEST_F(RunnerServerTest, TheServerEndsAndIsReapedWhenNoJobFollows) {
    RunServedJob();
    runner = platform::OwnedHandle();
    const test_support::Deadline deadline("the end of the server");
    while (!Children().empty()) {
        platform::SleepFor(std::chrono::milliseconds(10));
    }
}

TEST_F(RunnerServerTest, TheServerEndsWithTheRequestToTerminate) {
    ServerAfterAJob();
    EXPECT_EQ(Call("Terminate", L""), 0);
    EXPECT_EQ(Server(), 0);
}

TEST_F(RunnerServerTest, AnotherRunnerProgramIsStartedForEachJob) {
    const std::filesystem::path other = text::ToUtf8(platform::ToNativeText(directory / L"scenario_runner"));
    std::filesystem::create_symlink(text::ToUtf8(platform::ToNativeText(settings.runner)), other);
    settings.runner = directory / L"scenario_runner";
    for (int time = 0; time < 5; ++time) {
        UseNextJob();
        StartAndAwaitReady("be ready\nwait for file go\nexit 0");
        EXPECT_FALSE(IsOfServer(RunnerNumber()));
        WriteTextFile(InWorkDir(L"go"), "");
        EXPECT_EQ(AwaitEnd(), 0);
    }
}
