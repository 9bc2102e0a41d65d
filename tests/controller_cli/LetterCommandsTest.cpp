#include "FrontEndFixture.h"
#include "ScopedTemporaryFolder.h"

#include "companion/Messages.h"
#include "platform/FileSystem.h"
#include "platform/LineEnd.h"
#include "platform/NativePath.h"
#include "support/ControllerLogManager.h"

#include <thread>

namespace {

/// One-letter options, with paths as a person types them on this system.
class LetterCommandsTest : public FrontEndFixture {
protected:
    LetterCommandsTest() {
        WriteTextFile(folder / L"jobs.json", R"({"EnqueueJobs":[{"scenario":{"id":"r.rb"},"inputFileSets":[["a.stl"]],)"
                                             R"("outputDir":"out"}]})");
        host.transmitter.onSend = [this, answer = host.transmitter.onSend](const ScriptedTransmitter::Event& request) {
            if (request.name == L"EnqueueJobs") {
                AnswerEnqueue(request);
            } else {
                answer(request);
            }
        };
    }

    /// An answer carries the id of its request.
    void AnswerEnqueue(const ScriptedTransmitter::Event& request) {
        EnqueueJobsInfo info;
        messages::Deserialize(request.payload, info);
        JobEnqueueResult result;
        result.requestId = info.requestId;
        result.jobIds = enqueued;
        host.transmitter.Deliver(L"EnqueueJobsFinish", messages::Serialize(L"EnqueueJobsFinish", result));
    }

    void AnswerStatus() {
        JobStatusInfo info;
        info.id = L"3";
        info.status = JobStatus::Running;
        host.answers[L"CheckJobStatusRequest"] = {L"CheckJobStatusResponse",
                                                  messages::Serialize(L"CheckJobStatusResponse", std::vector{info})};
    }

    std::wstring Native(const std::wstring& name) { return platform::ToNativeText(folder / name); }
    static std::string Line(const std::string& text) { return text + std::string(platform::lineEnd); }

    std::vector<JobIdInfo> enqueued = {{L"id12", 12}};
};

TEST_F(LetterCommandsTest, AJobsFileIsEnqueuedAndItsLinesGoToStandardOutput) {
    for (const std::vector<std::wstring>& arguments : std::vector<std::vector<std::wstring>>{
             {Native(L"jobs.json")}, {L"-i", Native(L"jobs.json")}, {L"-i" + Native(L"jobs.json"), L"-f"}}) {
        console.output.clear();
        EXPECT_EQ(Run(arguments), 0);
        EXPECT_EQ(console.output, Line("12,Queued"));
    }
    EXPECT_EQ(console.errors, "");
}

TEST_F(LetterCommandsTest, TheLinesGoToTheOutputFile) {
    EXPECT_EQ(Run({L"-o", Native(L"lines.txt"), Native(L"jobs.json")}), 0);
    EXPECT_EQ(ReadTextFile(folder / L"lines.txt"), Line("12,Queued"));
    EXPECT_EQ(console.output, "");
}

TEST_F(LetterCommandsTest, AnOutputFileThatCannotBeWrittenIsTold) {
    EXPECT_EQ(Run({L"-i", Native(L"jobs.json"), L"-o", platform::ToNativeText(folder / L"no folder\\lines.txt")}), 2);
    EXPECT_NE(console.errors.find("lines.txt cannot be written: "), std::string::npos);
}

TEST_F(LetterCommandsTest, AJobsFileThatCannotBeReadIsTold) {
    EXPECT_EQ(Run({Native(L"none.json"), L"-o", Native(L"lines.txt")}), 2);
    EXPECT_NE(console.errors.find("none.json cannot be read"), std::string::npos);
    EXPECT_FALSE(platform::Exists(folder / L"lines.txt"));
    EXPECT_TRUE(host.Requests().empty());
}

TEST_F(LetterCommandsTest, ARefusedJobGivesOne) {
    enqueued = {{L"id12", 12}, {L"", 0}};
    EXPECT_EQ(Run({Native(L"jobs.json")}), 1);
    EXPECT_EQ(console.output, Line("12,Queued") + Line("-1,Failed"));
}

TEST_F(LetterCommandsTest, StatusLinesAreInEnglishWhateverTheCulture) {
    UseSettings(R"({"version":1,"logFile":"","culture":"de-DE"})");
    AnswerStatus();
    EXPECT_EQ(Run({L"-s", L"3,5"}), 0);
    EXPECT_EQ(console.output, Line("3,Running") + Line("5,Unknown"));
}

TEST_F(LetterCommandsTest, StatusLinesThatAreLostOnTheWayAreTold) {
    const ScopedTemporaryFolder temporary(folder.Path());
    host.transmitter.onSend = [this](const ScriptedTransmitter::Event&) {
        // Where the lines are to be kept for a moment.
        std::vector<platform::FolderEntry> entries;
        EXPECT_FALSE(platform::ListFolder(folder.Path(), entries));
        for (const platform::FolderEntry& entry : entries) {
            EXPECT_FALSE(!entry.isFolder ? platform::Error{}
                                         : platform::CreateFolder(folder / (entry.name + L"\\lines.txt")));
        }
        host.transmitter.Deliver(L"CheckJobStatusResponse", LR"({"CheckJobStatusResponse":[]})");
    };
    EXPECT_EQ(Run({L"-s", L"3"}), 2);
    EXPECT_EQ(console.output, "");
    EXPECT_NE(console.errors.find("lines.txt cannot be written: "), std::string::npos) << console.errors;
}

TEST_F(LetterCommandsTest, CancelSendsOneRequestAnIdAndPrintsNothing) {
    host.answers[L"CancelJobs"] = {L"CancelJobsFinish", LR"({"CancelJobsFinish":[]})"};
    EXPECT_EQ(Run({L"-c", L"3,5"}), 0);
    EXPECT_EQ(console.output, "");
    EXPECT_EQ(host.Requests(), (std::vector<ScriptedTransmitter::Event>{{L"CancelJobs", LR"({"CancelJobs":["3"]})"},
                                                                        {L"CancelJobs", LR"({"CancelJobs":["5"]})"}}));
}

/// The thread sanitizer looks on.
TEST_F(LetterCommandsTest, WhatTheHostTellsAllMayComeBeforeTheCommandIsSetUp) {
    host.answers[L"CancelJobs"] = {L"CancelJobsFinish", LR"({"CancelJobsFinish":[]})"};
    std::thread delivery;
    host.transmitter.onRegister = [&](const std::wstring& eventName, CallbackFunctor* handler) {
        if (handler == nullptr && delivery.joinable()) {
            delivery.join();
        }
        if (eventName == L"UpdateProgress" && handler != nullptr) {
            delivery = std::thread([handler] { (*handler)(LR"({"UpdateProgress":[]})"); });
        }
    };
    EXPECT_EQ(Run({L"-c", L"3"}), 0);
}

TEST_F(LetterCommandsTest, ACancelThatIsNotAnsweredIsTold) {
    patience = std::chrono::milliseconds(0);
    EXPECT_EQ(Run({L"-c", L"3"}), 3);
    EXPECT_EQ(console.errors, "controller_cli: The host did not answer the request to cancel job 3; whether it was "
                              "cancelled is not known.\n");
}

TEST_F(LetterCommandsTest, WithoutIdsNothingIsCancelled) {
    for (const std::vector<std::wstring>& arguments :
         std::vector<std::vector<std::wstring>>{{L"-c"}, {L"-c,"}, {L"-s"}, {L"-c", L"-o", L"x"}}) {
        console.errors.clear();
        EXPECT_EQ(Run(arguments), 2);
        EXPECT_EQ(console.errors, "controller_cli: The numbers or ids of the jobs are missing.\n"
                                  "Help: controller_cli --help\n");
    }
    EXPECT_TRUE(host.Requests().empty());
}

TEST_F(LetterCommandsTest, WrongUse) {
    const std::vector<std::pair<std::vector<std::wstring>, std::string>> wrong = {
        {{}, "No command was given."},
        {{L"-l", L"x.log"}, "No command was given."},
        {{L"-f", L"jobs.json"}, "No command was given."},
        {{L"-c1", L"-s2"}, "Only one command at a time."},
        {{L"a.json", L"b.json"}, "Only one command at a time."},
        {{L"-m", L"-f"}, "-m, being the host, takes neither"},
        {{L"-m", L"-s1"}, "-m, being the host, takes neither"},
    };
    for (const auto& [arguments, message] : wrong) {
        console.errors.clear();
        EXPECT_EQ(Run(arguments), 2);
        EXPECT_EQ(console.errors.find("controller_cli: " + message), 0U) << console.errors;
    }
    EXPECT_EQ(host.startCount + host.foregroundCount, 0);
}

TEST_F(LetterCommandsTest, BeingTheHostHandsItsExitCodeThrough) {
    host.foregroundExitCode = 4;
    EXPECT_EQ(Run({L"-m"}), 4);
    EXPECT_EQ(host.foregroundCount, 1);
    host.startProblem = L"no such program";
    EXPECT_EQ(Run({L"-m"}), 3);
}

TEST_F(LetterCommandsTest, AHostIsStartedWhereNoneRuns) {
    host.runs = false;
    EXPECT_EQ(Run({Native(L"jobs.json")}), 0);
    EXPECT_EQ(host.startCount, 1);
}

TEST_F(LetterCommandsTest, TheLogGoesToTheLogFile) {
    EXPECT_EQ(Run({Native(L"jobs.json"), L"-l", Native(L"client.log")}), 0);
    EXPECT_NE(ReadTextFile(folder / L"client.log").find("Job: 12 is added."), std::string::npos);
    ControllerLogManager::Initialize(0, L"", false);
}

} // namespace
