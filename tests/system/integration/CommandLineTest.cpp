#include "kit/processes/HostProcessFixture.h"

#include <optional>

#include "kit/OtherProcesses.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "platform/processes/Process.h"
#include "platform/system/SharedLibrary.h"
#include "text/Text.h"

namespace {

using test_support::Ending;

/// The command lines and the host as real processes with the real transmitter.
class CommandLineTest : public HostProcessFixture {
protected:
    Ending Cli(const std::vector<std::wstring>& arguments) const {
        return test_support::RunToEnd(FrontEndProcess(arguments));
    }

    static std::string Line(const std::string& text) { return text + std::string(platform::lineEnd); }
    std::wstring Native(const std::wstring& path) const { return platform::ToNativeText(path); }
};

TEST_F(CommandLineTest, TheFirstCommandStartsAHostAndTheLastOneStopsIt) {
    const Ending list = Cli({L"cadjobs", L"list"});
    EXPECT_EQ(list.output, "There are no jobs.\n");
    EXPECT_EQ(list.exitCode, 0);
    const Ending stop = Cli({L"cadjobs", L"host", L"stop"});
    EXPECT_EQ(stop.output, "The host has ended.\n");
    EXPECT_EQ(stop.exitCode, 0);
    AwaitNoHost();
}

TEST_F(CommandLineTest, WhatJobsWouldFailForIsToldByTheCommandThatStartsTheHostAlone) {
    std::string text = UsualSettings("job_list.json");
    WriteSettings(text.insert(text.find('{') + 1, R"("scenarioRunner":"missing",)"));
    const Ending first = Cli({L"cadjobs", L"list"});
    EXPECT_EQ(first.exitCode, 0);
    const std::string warning = "controller_host: warning: The program that runs scenarios, ";
    EXPECT_EQ(first.output.find(warning), 0U) << first.output;
    EXPECT_NE(first.output.find("\nThere are no jobs.\n"), std::string::npos) << first.output;
    EXPECT_EQ(Cli({L"cadjobs", L"list"}).output, "There are no jobs.\n");
    EXPECT_EQ(Cli({L"cadjobs", L"host", L"stop"}).exitCode, 0);
    AwaitNoHost();
}

TEST_F(CommandLineTest, AClientAloneSaysThatThereIsNoHost) {
    for (const std::vector<std::wstring>& arguments : std::vector<std::vector<std::wstring>>{
             {L"controller_cli", L"-f", L"-s1"}, {L"cadjobs", L"list", L"-f"}, {L"cadjobs", L"host", L"stop"}}) {
        const Ending ending = Cli(arguments);
        EXPECT_EQ(ending.exitCode, 3);
        EXPECT_EQ(ending.output.find(text::ToUtf8(arguments[0]) + ": No host is running."), 0U) << ending.output;
    }
}

TEST_F(CommandLineTest, WhyTheTransmitterCannotBeLoadedIsTold) {
    std::string text = UsualSettings("job_list.json");
    WriteSettings(text.insert(text.find('{') + 1, R"("eventTransmitter":"missing",)"));
    const std::string reason =
        "missing cannot be loaded: " + text::ToUtf8(platform::LoadProblem(directory / L"missing"));
    for (const std::vector<std::wstring>& arguments :
         std::vector<std::vector<std::wstring>>{{L"cadjobs", L"list"}, {L"controller_cli", L"-s1"}}) {
        const Ending ending = Cli(arguments);
        EXPECT_EQ(ending.exitCode, 3);
        EXPECT_NE(ending.output.find(reason), std::string::npos) << ending.output;
    }
}

TEST_F(CommandLineTest, AJobsFileIsEnqueuedWaitedForAndAskedAbout) {
    StartHost();
    const Ending enqueue = Cli({L"controller_cli", Native(JobsFile("exit 0", 2)), L"-f"});
    EXPECT_EQ(enqueue.output, Line("1,Queued") + Line("2,Queued"));
    EXPECT_EQ(enqueue.exitCode, 0);
    const Ending wait = Cli({L"cadjobs", L"wait", L"1,2"});
    EXPECT_EQ(wait.exitCode, 0) << wait.output;
    EXPECT_NE(wait.output.find("Succeeded: 2, failed: 0, cancelled: 0\n"), std::string::npos) << wait.output;
    EXPECT_EQ(Cli({L"controller_cli", L"-s", L"2,7"}).output, Line("2,Success") + Line("7,Unknown"));
    EXPECT_EQ(Cli({L"cadjobs", L"delete", L"1,2"}).output, "Job 1 is deleted.\nJob 2 is deleted.\n");
    EXPECT_EQ(Cli({L"cadjobs", L"list", L"--json"}).output, "{\"version\":1,\"jobs\":[]}\n");
}

TEST_F(CommandLineTest, AJobsFileStartsAHost) {
    EXPECT_EQ(Cli({L"controller_cli", Native(JobsFile("exit 0", 2))}).output, Line("1,Queued") + Line("2,Queued"));
    EXPECT_EQ(Cli({L"cadjobs", L"wait", L"1,2"}).exitCode, 0);
    EXPECT_EQ(Cli({L"cadjobs", L"host", L"stop"}).exitCode, 0);
    AwaitNoHost();
}

TEST_F(CommandLineTest, RunShowsWhyAJobFailed) {
    StartHost();
    WriteTextFile(directory / L"fails.rb", "print hello\nexit 3");
    const Ending run = Cli({L"cadjobs", L"run", Native(directory / L"fails.rb"), Native(directory / L"inputs.txt"),
                            L"--output", Native(directory / L"out")});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_NE(run.output.find("Succeeded: 0, failed: 1, cancelled: 0\n"), std::string::npos) << run.output;
    EXPECT_EQ(Cli({L"cadjobs", L"log", L"1"}).output, "hello\n");
}

TEST_F(CommandLineTest, AnInputThatWouldLeadOutOfTheOutputDirectoryIsRefused) {
    StartHost();
    WriteTextFile(directory / L".hidden", "an input");
    WriteTextFile(directory / L"some.rb", "exit 0");
    const std::wstring output = Native(directory / L"chosen");
    const Ending run =
        Cli({L"cadjobs", L"run", Native(directory / L"some.rb"), Native(directory / L".hidden"), L"--output", output});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.output.find("cadjobs: The input "), 0U) << run.output;
    WriteTextFile(
        directory / L"hidden.jobs.json",
        R"({"EnqueueJobs":[{"scenario":{"id":"some.rb"},"inputFileSets":[[".hidden"]],"outputDir":"chosen"}]})");
    EXPECT_EQ(Cli({L"controller_cli", Native(directory / L"hidden.jobs.json")}).exitCode, 1);
    EXPECT_FALSE(platform::Exists(directory / L"chosen"));
    EXPECT_FALSE(platform::Exists(directory / L"chosen_1"));
    EXPECT_EQ(Cli({L"cadjobs", L"list"}).output, "There are no jobs.\n");
}

TEST_F(CommandLineTest, AnUnknownScenarioIsCalledSoAndNotItsInput) {
    StartHost();
    const Ending run = Cli({L"cadjobs", L"run", L"nothing.rb", Native(directory / L"inputs.txt")});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.output, "cadjobs: There is no scenario nothing.rb: it is neither an id of a scenario nor a file "
                          "of the scenario directories.\n");
}

TEST_F(CommandLineTest, OneFrontEndSeesWhatAnotherOneDoes) {
    StartHost();
    EXPECT_EQ(Cli({L"controller_cli", Native(JobsFile("wait"))}).output, Line("1,Queued"));
    platform::OutputPipe pipe;
    ASSERT_TRUE(pipe.Open());
    platform::ProcessStart start = FrontEndProcess({L"cadjobs", L"wait", L"1"});
    start.output = pipe.WriteEnd();
    platform::OwnedHandle waiting;
    ASSERT_TRUE(platform::StartProcess(start, waiting));
    pipe.CloseWriteEnd();
    ASSERT_TRUE(test_support::ReadUntil(pipe, "Job 1 Running"));
    EXPECT_EQ(Cli({L"cadjobs", L"cancel", L"1"}).exitCode, 0);
    const std::string rest = test_support::ReadToEnd(pipe);
    EXPECT_NE(rest.find("Succeeded: 0, failed: 0, cancelled: 1\n"), std::string::npos) << rest;
    ASSERT_TRUE(test_support::WaitUntilSignalled(waiting.Get()));
    EXPECT_EQ(platform::ExitCode(waiting.Get()), 1);
}

TEST_F(CommandLineTest, AFrontEndWhoseReaderHasGoneEnds) {
    StartHost();
    for (const std::vector<std::wstring>& arguments :
         std::vector<std::vector<std::wstring>>{{L"cadjobs", L"wait", L"1"}, {L"cadjobs", L"watch"}}) {
        const std::string jobs = Cli({L"controller_cli", Native(JobsFile("wait"))}).output;
        const std::string number = jobs.substr(0, jobs.find(','));
        std::optional<platform::OutputPipe> pipe(std::in_place);
        ASSERT_TRUE(pipe->Open());
        platform::ProcessStart start = FrontEndProcess(arguments);
        start.output = pipe->WriteEnd();
        platform::OwnedHandle showing;
        ASSERT_TRUE(platform::StartProcess(start, showing));
        pipe->CloseWriteEnd();
        ASSERT_TRUE(test_support::ReadUntil(*pipe, "Job " + number));
        pipe.reset();
        // Windows detects it when the next change is written.
        EXPECT_EQ(Cli({L"cadjobs", L"cancel", text::FromUtf8(number)}).exitCode, 0);
        ASSERT_TRUE(test_support::WaitUntilSignalled(showing.Get()));
        EXPECT_EQ(platform::ExitCode(showing.Get()), 141);
    }
}

TEST_F(CommandLineTest, AFrontEndNoticesThatTheHostIsKilled) {
    StartHost();
    EXPECT_EQ(Cli({L"controller_cli", Native(JobsFile("wait"))}).output, Line("1,Queued"));
    platform::OutputPipe pipe;
    ASSERT_TRUE(pipe.Open());
    platform::ProcessStart start = FrontEndProcess({L"cadjobs", L"watch"});
    start.output = pipe.WriteEnd();
    platform::OwnedHandle watching;
    ASSERT_TRUE(platform::StartProcess(start, watching));
    pipe.CloseWriteEnd();
    ASSERT_TRUE(test_support::ReadUntil(pipe, "Job 1 Running"));
    test_support::KillProcess(host.Get());
    EXPECT_NE(test_support::ReadToEnd(pipe).find("The host has gone."), std::string::npos);
    ASSERT_TRUE(test_support::WaitUntilSignalled(watching.Get()));
    EXPECT_EQ(platform::ExitCode(watching.Get()), 3);
}

TEST_F(CommandLineTest, WhyItCannotBeTheHostIsToldOnStandardError) {
    StartHost();
    platform::OutputPipe errors;
    ASSERT_TRUE(errors.Open());
    platform::OwnedHandle foreground;
    ASSERT_TRUE(platform::StartProcess(FrontEndProcess({L"controller_cli", L"-m"}), errors.WriteEnd(), foreground));
    errors.CloseWriteEnd();
    const std::string said = test_support::ReadToEnd(errors);
    EXPECT_NE(said.find("controller_host: another host is running"), std::string::npos) << said;
    ASSERT_TRUE(test_support::WaitUntilSignalled(foreground.Get()));
    EXPECT_EQ(platform::ExitCode(foreground.Get()), 4);
}

TEST_F(CommandLineTest, BeingTheHostLastsUntilTheHostIsAskedToEnd) {
    platform::ProcessStart start = FrontEndProcess({L"controller_cli", L"-m"});
    platform::OwnedHandle foreground;
    ASSERT_TRUE(platform::StartProcess(start, foreground));
    while (Cli({L"cadjobs", L"list", L"-f"}).exitCode == 3) {
        ASSERT_TRUE(platform::IsProcessRunning(foreground.Get()));
    }
    EXPECT_EQ(Cli({L"cadjobs", L"host", L"stop"}).exitCode, 0);
    ASSERT_TRUE(test_support::WaitUntilSignalled(foreground.Get()));
    EXPECT_EQ(platform::ExitCode(foreground.Get()), 0);
}

} // namespace
