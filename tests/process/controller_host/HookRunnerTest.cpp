#include "controller_host/hooks/HookRunner.h"

#include "controller_host/hooks/HookSupervisor.h"
#include "kit/Deadline.h"
#include "kit/LogCapture.h"
#include "kit/OtherProcesses.h"
#include "kit/TestProcess.h"
#include "kit/controller_host/HostFixture.h"
#include "platform/files/NativePath.h"
#include "text/Text.h"

namespace {

using std::chrono::milliseconds;
using Texts = std::vector<std::wstring>;

/// Commands are the program test_process; the end of a runner waits for them.
class HookRunnerTest : public testing::Test {
protected:
    static HookRunner::Limits Patient() { return {test_support::timeout, 4, 1000, test_support::timeout}; }

    HookCall Call(const Texts& arguments) const {
        HookCall call;
        call.event = L"jobEnded";
        call.subject = L"job 7";
        call.command = arguments;
        call.command.insert(call.command.begin(), test_support::ProgramPath(L"test_process"));
        call.directory = directory.Path();
        call.environment = {{L"CONTROLLER_EVENT", L"jobEnded"}, {L"CONTROLLER_JOB_ID", std::nullopt}};
        return call;
    }

    std::wstring Record() const { return directory / L"record.txt"; }
    std::string Recorded() const { return platform::Exists(Record()) ? ReadTextFile(Record()) : std::string(); }
    std::string NativeDirectory() const { return text::ToUtf8(platform::ToNativeText(directory.Path())); }
    std::string ProgramText() const { return text::ToUtf8(test_support::ProgramPath(L"test_process")); }

    void AwaitRecord() const {
        const test_support::Deadline deadline("the record of a hook");
        platform::DirectoryWatch watch(directory.Path());
        while (!platform::Exists(Record())) {
            platform::WaitForAny({watch.Handle()}, std::nullopt);
            watch.Rearm();
        }
    }

    /// Lines of the log that contain the text.
    std::size_t CountLogged(const std::string& text) const {
        std::size_t count = 0;
        const std::string logged = log.Text();
        for (std::size_t place = 0; (place = logged.find(text, place)) != std::string::npos; ++place) {
            ++count;
        }
        return count;
    }

    const TemporaryDirectory directory;
    const LogCapture log;
};

TEST_F(HookRunnerTest, ACommandGetsItsArgumentsItsVariablesAndItsDirectory) {
    {
        HookRunner runner(Patient());
        runner.Run(Call({L"record-hook", Record(), L"a b", L"\"$HOME\" %PATH%", L"\\", L"*", L"\u00e4"}));
    }
    EXPECT_EQ(Recorded(), NativeDirectory() + " [a b] [\"$HOME\" %PATH%] [\\] [*] [\xc3\xa4] EVENT=jobEnded\n");
    EXPECT_EQ(log.Text(), "");
}

TEST_F(HookRunnerTest, ManyCallsAllRun) {
    constexpr std::size_t count = 20;
    {
        HookRunner runner(Patient());
        for (std::size_t call = 0; call < count; ++call) {
            runner.Run(Call({L"record-hook", directory / (L"record" + std::to_wstring(call))}));
        }
    }
    for (std::size_t call = 0; call < count; ++call) {
        EXPECT_TRUE(platform::Exists(directory / (L"record" + std::to_wstring(call)))) << call;
    }
    EXPECT_EQ(log.Text(), "");
}

TEST_F(HookRunnerTest, ACommandThatFailsIsLoggedAndTheNextOneRuns) {
    {
        HookRunner::Limits limits = Patient();
        limits.running = 1;
        HookRunner runner(limits);
        runner.Run(Call({L"exit", L"3"}));
        runner.Run(Call({L"record-hook", Record()}));
    }
    EXPECT_EQ(CountLogged("The hook \"jobEnded\" (" + ProgramText() + ") for job 7 ended with exit code 3."), 1U)
        << log.Text();
    EXPECT_NE(Recorded(), "");
}

TEST_F(HookRunnerTest, AProgramThatIsMissingIsLogged) {
    {
        HookRunner runner(Patient());
        HookCall call = Call({});
        call.command = {L"no-such-program-anywhere"};
        call.subject.clear();
        runner.Run(call);
    }
    EXPECT_EQ(CountLogged("The hook \"jobEnded\" (no-such-program-anywhere) cannot be started: the program is missing"),
              1U)
        << log.Text();
}

TEST_F(HookRunnerTest, AProgramThatTheSystemRefusesIsLogged) {
    {
        HookRunner runner(Patient());
        HookCall call = Call({L"exit", L"0"});
        call.directory = directory / L"missing";
        runner.Run(call);
    }
    EXPECT_EQ(CountLogged("for job 7 cannot be started: "), 1U) << log.Text();
}

TEST_F(HookRunnerTest, ACommandThatRunsTooLongIsEnded) {
    HookRunner::Limits limits = Patient();
    limits.runTime = milliseconds(0);
    const test_support::Deadline deadline("the end of a command after its time");
    {
        HookRunner runner(limits);
        runner.Run(Call({L"wait-stubbornly"}));
    }
    EXPECT_EQ(CountLogged("did not end within 0 s and was ended with all processes that it had started."), 1U)
        << log.Text();
}

TEST_F(HookRunnerTest, TheEndOfTheHostEndsCommandsAndDropsThoseThatWait) {
    HookRunner::Limits limits = Patient();
    limits.running = 1;
    limits.waiting = 2;
    limits.grace = milliseconds(0);
    {
        HookRunner runner(limits);
        runner.Run(Call({L"record-hook-and-wait", Record()}));
        AwaitRecord();
        for (int call = 0; call < 5; ++call) {
            runner.Run(Call({L"record-hook", directory / L"never"}));
        }
    }
    EXPECT_EQ(CountLogged("was ended because the host ends."), 1U) << log.Text();
    EXPECT_EQ(CountLogged("dropped, because too many were waiting or the host ends: 5."), 1U) << log.Text();
    EXPECT_FALSE(platform::Exists(directory / L"never"));
}

/// A supervisor that the test starts itself, for a host that may be another process.
class HookRunnerTest_Supervisor : public HookRunnerTest {
protected:
    platform::ProcessStart Supervisor(const Texts& arguments, void* host) const {
        SupervisedHook hook;
        hook.stop = platform::InheritedHandleText(stop.Handle());
        hook.host = platform::InheritedHandleText(host);
        hook.limit = test_support::timeout;
        hook.directory = directory.Path();
        hook.program = test_support::ProgramPath(L"test_process");
        hook.arguments = arguments;
        platform::ProcessStart start;
        start.program = test_support::ProgramPath(L"controller_host");
        start.arguments = ArgumentsOf(hook);
        start.inherited = {stop.Handle(), host};
        return start;
    }

    const platform::Event stop;
};

TEST_F(HookRunnerTest_Supervisor, WhatACommandLeavesRunningIsEndedWithIt) {
    const platform::OwnedHandle self = platform::OpenSelf();
    EXPECT_EQ(test_support::RunToEnd(Supervisor({L"leave-one-behind"}, self.Get())).exitCode, 0);
    EXPECT_EQ(test_support::CountProcessesIn(directory.Path()), 0);
}

TEST_F(HookRunnerTest_Supervisor, ACommandIsEndedWhenItsHostIsKilled) {
    platform::OwnedHandle host;
    ASSERT_TRUE(platform::StartProcess(test_support::TestProcess({L"wait"}), host));
    platform::OutputPipe output;
    ASSERT_TRUE(output.Open());
    platform::ProcessStart start = Supervisor({L"record-hook-and-wait", Record()}, host.Get());
    start.output = output.WriteEnd();
    platform::OwnedHandle supervisor;
    ASSERT_TRUE(platform::StartProcess(start, supervisor));
    output.CloseWriteEnd();
    AwaitRecord();
    test_support::KillProcess(host.Get());
    EXPECT_EQ(test_support::ReadToEnd(output), "was ended because the host ends");
    EXPECT_EQ(test_support::CountProcessesIn(directory.Path()), 0);
}

TEST_F(HookRunnerTest, ASupervisorWithoutItsHandlesStartsNothing) {
    SupervisedHook hook;
    hook.stop = L"99999";
    hook.host = L"x";
    hook.program = test_support::ProgramPath(L"test_process");
    hook.arguments = {L"record-hook", Record()};
    platform::ProcessStart start;
    start.program = test_support::ProgramPath(L"controller_host");
    start.arguments = ArgumentsOf(hook);
    const test_support::Ending ending = test_support::RunToEnd(start);
    EXPECT_EQ(ending.exitCode, 1);
    EXPECT_EQ(ending.output, "was not started: its supervisor has no handle of the host");
    EXPECT_EQ(Recorded(), "");
}

/// The host's loop with real hooks.
class HookRunnerTest_Loop : public HostFixture {
protected:
    void AwaitFile(const std::wstring& name) const {
        const test_support::Deadline deadline("the file of a hook");
        platform::DirectoryWatch watch(directory.Path());
        while (!platform::Exists(directory / name)) {
            platform::WaitForAny({watch.Handle()}, std::nullopt);
            watch.Rearm();
        }
    }
    static std::string InJson(const std::wstring& path) {
        std::string text = text::ToUtf8(path);
        for (std::size_t place = 0; (place = text.find('\\', place)) != std::string::npos; place += 2) {
            text.insert(place, "\\");
        }
        return text;
    }
};

TEST_F(HookRunnerTest_Loop, AJobThatFailsRunsTheHooksOfTheSettings) {
    const std::string program = InJson(test_support::ProgramPath(L"test_process"));
    const auto command = [&](const std::string& file) {
        return "[\"" + program + R"(","record-hook",")" + file + "\"]";
    };
    WriteTextFile(directory / L"settings.json",
                  R"({"version":1,"workDirectory":"work","jobListFile":"job_list.json","logFile":"",)"
                  R"("scenarioDirectories":[{"path":"scenarios"}],"hooks":{"jobEnded":)" +
                      command("ended") + ",\"jobFailed\":" + command("failed") + ",\"queueEmpty\":" + command("empty") +
                      "}}");
    settings::UseFile(directory / L"settings.json");
    StartLoop();
    Enqueue(1);
    WaitForStatus(JobStatus::Running);
    processes.front().Finish();
    AwaitFile(L"ended");
    AwaitFile(L"failed");
    AwaitFile(L"empty");
}

} // namespace
