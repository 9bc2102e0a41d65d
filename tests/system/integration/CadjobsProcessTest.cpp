#include "kit/processes/HostProcessFixture.h"

#include "platform/files/NativePath.h"
#include "platform/processes/Process.h"

namespace {

using test_support::Ending;

/// The command line for people and the host as real processes with the real transmitter.
class CadjobsProcessTest : public HostProcessFixture {
protected:
    Ending Cadjobs(const std::vector<std::wstring>& arguments) const {
        std::vector<std::wstring> commandLine = {L"cadjobs"};
        commandLine.insert(commandLine.end(), arguments.begin(), arguments.end());
        return test_support::RunToEnd(FrontEndProcess(commandLine));
    }

    std::wstring Native(const std::wstring& path) const { return platform::ToNativeText(path); }
};

TEST_F(CadjobsProcessTest, AHostIsStartedFoundAndStopped) {
    EXPECT_EQ(Cadjobs({L"host", L"status"}).exitCode, 3);
    const Ending overview = Cadjobs({});
    EXPECT_EQ(overview.exitCode, 0);
    EXPECT_EQ(overview.output.find("No host is running. "), 0U) << overview.output;
    const Ending start = Cadjobs({L"host", L"start"});
    EXPECT_EQ(start.exitCode, 0) << start.output;
    EXPECT_NE(start.output.find("The host is running: process "), std::string::npos) << start.output;
    EXPECT_EQ(Cadjobs({L"host", L"status"}).exitCode, 0);
    EXPECT_EQ(Cadjobs({L"host", L"stop"}).output, "The host has ended.\n");
    AwaitNoHost();
}

TEST_F(CadjobsProcessTest, JobsOfAFileAreAddedWaitedForShownAndDeleted) {
    StartHost();
    EXPECT_EQ(Cadjobs({L"add", Native(JobsFile("exit 0", 3))}).output,
              "Job 1 is queued: inputs.txt\nJob 2 is queued: inputs.txt\nJob 3 is queued: inputs.txt\n");
    const Ending wait = Cadjobs({L"wait", L"1-3"});
    EXPECT_EQ(wait.exitCode, 0) << wait.output;
    const Ending shown = Cadjobs({L"show", L"last"});
    EXPECT_NE(shown.output.find("  Success\n"), std::string::npos) << shown.output;
    EXPECT_EQ(Cadjobs({L"list", L"--state", L"Success", L"--columns", L"number", L"--reverse"}).output,
              "Job\n  3\n  2\n  1\n");
    EXPECT_EQ(Cadjobs({L"delete", L"2-3"}).output, "Job 2 is deleted.\nJob 3 is deleted.\n");
    EXPECT_EQ(Cadjobs({L"list", L"2"}).exitCode, 2);
}

TEST_F(CadjobsProcessTest, WaitingJobsAreHeldReleasedAndCancelled) {
    StartHost();
    EXPECT_EQ(Cadjobs({L"pause"}).exitCode, 0);
    EXPECT_EQ(Cadjobs({L"add", Native(JobsFile("exit 0", 2))}).exitCode, 0);
    const Ending overview = Cadjobs({});
    EXPECT_NE(overview.output.find("\nThe queue is paused. Queued: 2, running: 0, "), std::string::npos)
        << overview.output;
    EXPECT_EQ(Cadjobs({L"hold", L"--state", L"Queued"}).output, "Job 1 is on hold.\nJob 2 is on hold.\n");
    EXPECT_EQ(Cadjobs({L"release", L"last"}).output, "Job 2 is released.\n");
    EXPECT_EQ(Cadjobs({L"cancel", L"1"}).output, "Job 1: Dequeued\n");
    EXPECT_EQ(Cadjobs({L"resume"}).exitCode, 0);
    EXPECT_EQ(Cadjobs({L"wait", L"2"}).exitCode, 0);
}

} // namespace
