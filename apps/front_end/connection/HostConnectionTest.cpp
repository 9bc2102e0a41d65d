#include "kit/front_end/CadjobsFixture.h"

#include "platform/files/NativePath.h"

namespace {

class HostConnectionTest : public CadjobsFixture {};

TEST_F(HostConnectionTest, AHostIsStartedWhereNoneRuns) {
    host.runs = false;
    EXPECT_EQ(Run({L"list"}), 0);
    EXPECT_EQ(host.startCount, 1);
}

TEST_F(HostConnectionTest, WhatAHostThatIsStartedWarnsOfIsShownOnce) {
    host.runs = false;
    host.startWarnings = L"controller_host: warning: one\ncontroller_host: warning: two";
    EXPECT_EQ(Run({L"list"}), 0);
    EXPECT_EQ(console.errors, "controller_host: warning: one\ncontroller_host: warning: two\n");
    EXPECT_EQ(console.output, "There are no jobs.\n");
    EXPECT_EQ(Run({L"list"}), 0);
    EXPECT_EQ(console.errors, "controller_host: warning: one\ncontroller_host: warning: two\n");
}

TEST_F(HostConnectionTest, ARunningHostIsUsed) {
    EXPECT_EQ(Run({L"list"}), 0);
    EXPECT_EQ(host.startCount, 0);
}

TEST_F(HostConnectionTest, AClientAloneStartsNoHost) {
    for (const std::vector<std::wstring>& arguments :
         std::vector<std::vector<std::wstring>>{{L"list", L"--client-only"}, {L"-f", L"list"}}) {
        host.runs = false;
        console.errors.clear();
        EXPECT_EQ(Run(arguments), 3);
        EXPECT_EQ(host.startCount, 0);
        EXPECT_EQ(console.errors, "cadjobs: No host is running. Start one with cadjobs host start.\n");
    }
    EXPECT_EQ(console.output, "");
}

TEST_F(HostConnectionTest, AHostThatSomebodyElseIsStartingIsWaitedFor) {
    for (const std::vector<std::wstring>& arguments :
         std::vector<std::vector<std::wstring>>{{L"list"}, {L"list", L"-f"}}) {
        host.runs = false;
        host.lookCount = 0;
        host.looksUntilReady = 5;
        EXPECT_EQ(Run(arguments), 0) << console.errors;
        EXPECT_EQ(host.startCount, 0);
        EXPECT_EQ(host.lookCount, 5);
    }
}

TEST_F(HostConnectionTest, AHostThatDoesNotBecomeReadyIsWaitedForAsLongAsAnAnswerMayTake) {
    host.runs = false;
    host.looksUntilReady = 1000000;
    timeout = std::chrono::milliseconds(0);
    EXPECT_EQ(Run({L"list", L"-f"}), 3);
    EXPECT_EQ(console.errors, "cadjobs: The host did not answer within 0 s. QRV_KT_WAIT_RESPONSE_SEC sets how "
                              "long to wait.\n");
}

TEST_F(HostConnectionTest, AHostThatEndsWhileItStartsIsReplaced) {
    host.runs = false;
    host.transmitter.onConnect = [this] {
        // The starting host has gone at the second try.
        host.looksUntilReady = host.lookCount == 0 ? 100 : 0;
    };
    EXPECT_EQ(Run({L"list"}), 0) << console.errors;
    EXPECT_EQ(host.lookCount, 1);
    EXPECT_EQ(host.startCount, 1);
}

TEST_F(HostConnectionTest, CtrlCEndsTheWaitForAHostThatStarts) {
    host.runs = false;
    host.looksUntilReady = 1000000;
    stop.Raise();
    EXPECT_EQ(Run({L"list", L"-f"}), 130);
}

TEST_F(HostConnectionTest, WhyAHostCannotBeReachedIsTold) {
    host.runs = false;
    host.transmitter.connectionProblem = L"it speaks another version";
    EXPECT_EQ(Run({L"list"}), 3);
    EXPECT_EQ(console.errors, "cadjobs: The host cannot be reached: it speaks another version\n");
    EXPECT_EQ(host.startCount, 0);
}

TEST_F(HostConnectionTest, ABusyHostIsWaitedFor) {
    host.transmitter.isBusy = true;
    host.transmitter.connectionProblem = L"it is busy";
    host.transmitter.canSend = false;
    int attempts = 0;
    host.transmitter.onConnect = [&] {
        if (++attempts == 3) {
            host.transmitter.isBusy = false;
            host.transmitter.connectionProblem.clear();
            host.transmitter.canSend = true;
        }
    };
    EXPECT_EQ(Run({L"list"}), 0) << console.errors;
    EXPECT_EQ(attempts, 3);
    EXPECT_EQ(host.startCount, 0);
}

TEST_F(HostConnectionTest, AHostThatStaysBusyIsToldAsBusy) {
    host.transmitter.isBusy = true;
    host.transmitter.connectionProblem = L"it is busy: 256 front ends are connected";
    host.transmitter.canSend = false;
    timeout = std::chrono::milliseconds(0);
    for (const std::vector<std::wstring>& arguments :
         std::vector<std::vector<std::wstring>>{{L"list"}, {L"list", L"-f"}, {L"wait", L"1", L"-f"}}) {
        console.errors.clear();
        EXPECT_EQ(Run(arguments), 3);
        EXPECT_EQ(console.errors, "cadjobs: The host cannot be reached: it is busy: 256 front ends are "
                                  "connected\n");
    }
    EXPECT_EQ(host.startCount, 0);
}

TEST_F(HostConnectionTest, CtrlCEndsTheWaitForABusyHost) {
    host.transmitter.isBusy = true;
    host.transmitter.connectionProblem = L"it is busy";
    host.transmitter.canSend = false;
    stop.Raise();
    EXPECT_EQ(Run({L"list"}), 130);
}

TEST_F(HostConnectionTest, WithoutAnExtensionAHostIsStartedBecauseNothingTellsWhetherOneRuns) {
    host.hasNoExtension = true;
    EXPECT_EQ(Run({L"list"}), 0);
    EXPECT_EQ(host.startCount, 1);
    EXPECT_EQ(Run({L"list", L"-f"}), 0);
    EXPECT_EQ(host.startCount, 1);
}

TEST_F(HostConnectionTest, WhyAHostCannotBeStartedIsTold) {
    host.runs = false;
    host.startProblem = L"controller_host: the disk is full";
    EXPECT_EQ(Run({L"list"}), 3);
    EXPECT_EQ(console.errors, "cadjobs: No host is running, and none can be started: controller_host: the disk "
                              "is full\n");
}

TEST_F(HostConnectionTest, AModuleWithoutTransmitterIsNamed) {
    host.hasNoTransmitter = true;
    EXPECT_EQ(Run({L"list"}), 3);
    EXPECT_NE(console.errors.find("transmitter_by_address"), std::string::npos);
    EXPECT_NE(console.errors.find(" cannot be loaded: no such file. The settings name it (eventTransmitter).\n"),
              std::string::npos)
        << console.errors;
}

TEST_F(HostConnectionTest, AHostThatGoesAwayBeforeItsAnswerIsTold) {
    host.diesAt = L"InitJobsRequest";
    for (const std::vector<std::wstring>& command :
         std::vector<std::vector<std::wstring>>{{L"list"}, {L"watch"}, {L"cancel", L"--all"}}) {
        console.errors.clear();
        EXPECT_EQ(Run(command), 3);
        EXPECT_EQ(console.errors, "cadjobs: The host has gone. The list of jobs is kept.\n");
    }
}

TEST_F(HostConnectionTest, AHostThatGoesAwayBetweenTwoRequestsIsTold) {
    host.jobs = {Job(1, L"a.stl", JobStatus::Queued)};
    host.diesAt = L"CancelJobs";
    EXPECT_EQ(Run({L"cancel", L"1"}), 3);
    EXPECT_EQ(console.output, "");
}

TEST_F(HostConnectionTest, AnAnswerThatDoesNotComeIsTold) {
    host.answers[L"InitJobsRequest"] = {L"CancelJobsFinish", LR"({"CancelJobsFinish":[]})"};
    timeout = std::chrono::milliseconds(0);
    EXPECT_EQ(Run({L"list"}), 3);
    EXPECT_EQ(console.errors, "cadjobs: The host did not answer within 0 s. QRV_KT_WAIT_RESPONSE_SEC sets how "
                              "long to wait.\n");
}

TEST_F(HostConnectionTest, ARefusalIsTold) {
    host.answers[L"FetchScenariosRequest"] = {L"RequestRefused",
                                              LR"({"RequestRefused":"FetchScenariosRequest is refused: no."})"};
    EXPECT_EQ(Run({L"scenarios"}), 1);
    EXPECT_EQ(console.errors, "cadjobs: FetchScenariosRequest is refused: no.\n");
}

TEST_F(HostConnectionTest, CtrlCEndsAWaitForAnAnswer) {
    host.answers[L"InitJobsRequest"] = {L"CancelJobsFinish", LR"({"CancelJobsFinish":[]})"};
    stop.Raise();
    EXPECT_EQ(Run({L"list"}), 130);
    EXPECT_EQ(console.errors, "");
}

TEST_F(HostConnectionTest, HandlersAreTakenAwayAtTheEnd) {
    EXPECT_EQ(Run({L"list"}), 0);
    EXPECT_FALSE(host.transmitter.HasHandlers());
}

TEST_F(HostConnectionTest, ALogThatExistsIsNamedWhenTheHostHasGone) {
    UseSettings(R"({"version":1,"logFile":"host.log"})");
    WriteTextFile(directory / L"host.log", "");
    host.diesAt = L"InitJobsRequest";
    EXPECT_EQ(Run({L"list"}), 3);
    EXPECT_EQ(console.errors, "cadjobs: The host has gone. The list of jobs is kept. The log: " +
                                  text::ToUtf8(platform::ToNativeText(directory / L"host.log")) + "\n");
}

TEST_F(HostConnectionTest, WrongSettingsAreRefusedBeforeAnythingIsSent) {
    UseSettings("{\"version\":1,\"logFile\":\"\",\"culture\":7}");
    EXPECT_EQ(Run({L"list"}), 2);
    EXPECT_NE(console.errors.find("The settings cannot be used: "), std::string::npos);
    EXPECT_NE(console.errors.find("culture"), std::string::npos);
    EXPECT_TRUE(host.Requests().empty());
    EXPECT_EQ(Run({L"--version"}), 0);
}

TEST_F(HostConnectionTest, StopHostAsksTheHostToEnd) {
    host.answers[L"TerminateRequest"] = {L"TerminateResponse", LR"({"TerminateResponse":null})"};
    EXPECT_EQ(Run({L"host", L"stop"}), 0);
    EXPECT_EQ(console.output, "The host has ended.\n");
}

TEST_F(HostConnectionTest, WithoutAnExtensionTheEndOfTheHostIsNotSeen) {
    host.hasNoExtension = true;
    host.answers[L"TerminateRequest"] = {L"TerminateResponse", LR"({"TerminateResponse":null})"};
    EXPECT_EQ(Run({L"host", L"stop"}), 1);
    EXPECT_EQ(console.errors, "cadjobs: The host will end; this event transmitter does not tell when it has.\n");
}

TEST_F(HostConnectionTest, StopHostStartsNone) {
    host.runs = false;
    EXPECT_EQ(Run({L"host", L"stop"}), 3);
    EXPECT_EQ(host.startCount, 0);
}

constexpr char elsewhere[] = "cadjobs: A host runs, but cannot be reached from here: process 4711, at /run/x. "
                             "Looked for at: the usual place. Are XDG_RUNTIME_DIR and the settings the same as where "
                             "it was started? To end it: cadjobs host stop\n";

TEST_F(HostConnectionTest, AHostThatListensElsewhereIsNamed) {
    host.runs = false;
    host.runningHost = L"process 4711, at /run/x";
    host.looksUntilReady = 1000000;
    for (const std::vector<std::wstring>& arguments :
         std::vector<std::vector<std::wstring>>{{L"list"}, {L"list", L"-f"}}) {
        console.errors.clear();
        EXPECT_EQ(Run(arguments), 3);
        EXPECT_EQ(console.errors, elsewhere);
    }
    EXPECT_EQ(host.startCount, 0);
}

TEST_F(HostConnectionTest, StopHostEndsAHostThatListensElsewhere) {
    host.runs = false;
    host.looksUntilReady = 1000000;
    host.runningHost = L"process 4711, at /run/x";
    EXPECT_EQ(Run({L"host", L"stop"}), 0);
    EXPECT_EQ(console.output, "The host has ended.\n");
    EXPECT_EQ(host.endCount, 1);
}

TEST_F(HostConnectionTest, StopHostTellsOfAHostThatDoesNotEnd) {
    host.runs = false;
    host.looksUntilReady = 1000000;
    host.runningHost = L"process 4711, at /run/x";
    host.hostEnd = front_end::HostEnd::StillRunning;
    EXPECT_EQ(Run({L"host", L"stop"}), 1);
    EXPECT_EQ(console.errors, "cadjobs: The host is still ending its jobs.\n");
    console.errors.clear();
    host.hostEnd = front_end::HostEnd::CannotBeAsked;
    EXPECT_EQ(Run({L"host", L"stop"}), 3);
    EXPECT_EQ(console.errors, elsewhere);
    EXPECT_EQ(console.output, "");
}

} // namespace
