#include "kit/front_end/ControllerCliFixture.h"

#include "CommonControllerLib/ControllerLogManager.h"
#include "formats/Messages.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "platform/system/Environment.h"

#include <algorithm>
#include <thread>

namespace {

/// One-letter options, with native paths.
class ShortOptionCommandsTest : public ControllerCliFixture {
protected:
    ShortOptionCommandsTest() {
        // Read once per process: responses arrive at once or never.
        platform::SetEnvironment(L"QRV_KT_WAIT_RESPONSE_SEC", L"0");
        WriteTextFile(directory / L"jobs.json",
                      R"({"EnqueueJobs":[{"scenario":{"id":"r.rb"},"inputFileSets":[["a.stl"]],)"
                      R"("outputDir":"out"}]})");
        host.transmitter.onSend = [this, answer = host.transmitter.onSend](const ScriptedTransmitter::Event& request) {
            if (request.name == L"EnqueueJobs") {
                AnswerEnqueue(request);
            } else {
                answer(request);
            }
        };
    }

    /// A response carries the id of its request.
    void AnswerEnqueue(const ScriptedTransmitter::Event& request) {
        ScheduledRequest info;
        EXPECT_TRUE(messages::Deserialize(request.payload, info));
        JobEnqueueResult result;
        result.requestId = info.requestId;
        result.jobIds = enqueued;
        result.inputSetResults = reasons;
        EXPECT_TRUE(host.transmitter.Deliver(L"EnqueueJobsFinish", messages::Serialize(L"EnqueueJobsFinish", result)));
    }

    void WriteJobsFile(const std::wstring& requests) {
        WriteTextFile(directory / L"jobs.json", text::ToUtf8(LR"({"EnqueueJobs":[)" + requests + L"]}"));
    }

    std::string Refused(const std::string& member, const std::string& reason) {
        return "controller_cli: " + text::ToUtf8(Native(L"jobs.json")) + ", " + member + ": refused: " + reason + "\n";
    }

    void AnswerStatus() {
        JobStatusInfo info;
        info.id = L"3";
        info.status = JobStatus::Running;
        host.answers[L"CheckJobStatusRequest"] = {L"CheckJobStatusResponse",
                                                  messages::Serialize(L"CheckJobStatusResponse", std::vector{info})};
    }

    std::wstring Native(const std::wstring& name) { return platform::ToNativeText(directory / name); }
    static std::string Line(const std::string& text) { return text + std::string(platform::lineEnd); }

    std::vector<JobIdInfo> enqueued = {{L"id12", 12}};
    /// The host's reasons for each input set.
    std::vector<std::vector<std::wstring>> reasons;
};

TEST_F(ShortOptionCommandsTest, AJobsFileIsEnqueuedAndItsLinesGoToStandardOutput) {
    for (const std::vector<std::wstring>& arguments : std::vector<std::vector<std::wstring>>{
             {Native(L"jobs.json")}, {L"-i", Native(L"jobs.json")}, {L"-i" + Native(L"jobs.json"), L"-f"}}) {
        console.output.clear();
        EXPECT_EQ(Run(arguments), 0);
        EXPECT_EQ(console.output, Line("12,Queued"));
    }
    EXPECT_EQ(console.errors, "");
}

TEST_F(ShortOptionCommandsTest, TheLinesGoToTheOutputFile) {
    EXPECT_EQ(Run({L"-o", Native(L"lines.txt"), Native(L"jobs.json")}), 0);
    EXPECT_EQ(ReadTextFile(directory / L"lines.txt"), Line("12,Queued"));
    EXPECT_EQ(console.output, "");
}

TEST_F(ShortOptionCommandsTest, AnOutputFileThatCannotBeOpenedIsToldBeforeAnythingIsSent) {
    host.runs = false;
    const std::wstring outputFile = platform::ToNativeText(directory / L"no folder\\lines.txt");
    EXPECT_EQ(Run({L"-i", Native(L"jobs.json"), L"-o", outputFile}), 2);
    EXPECT_NE(console.errors.find("lines.txt cannot be written: "), std::string::npos);
    EXPECT_NE(console.errors.find("Nothing was sent."), std::string::npos);
    EXPECT_EQ(Run({L"-s", L"3", L"-o", outputFile}), 2);
    EXPECT_TRUE(host.Requests().empty());
    EXPECT_EQ(host.startCount, 0);
}

TEST_F(ShortOptionCommandsTest, TheLinesOfARequestAreInTheOutputFileBeforeTheNextIsSent) {
    WriteJobsFile(LR"({},{"inputFileSets":[["a.stl"]]},{"inputFileSets":[["a.stl"]]})");
    std::vector<std::string> before;
    host.transmitter.onSend = [&](const ScriptedTransmitter::Event& request) {
        before.push_back(ReadTextFile(directory / L"lines.txt"));
        AnswerEnqueue(request);
        enqueued[0].seqId += 1;
    };
    EXPECT_EQ(Run({Native(L"jobs.json"), L"-o", Native(L"lines.txt")}), 0);
    EXPECT_EQ(before, (std::vector<std::string>{"", Line("12,Queued"), Line("12,Queued") + Line("13,Queued")}));
}

TEST_F(ShortOptionCommandsTest, AJobsFileThatCannotBeReadIsTold) {
    EXPECT_EQ(Run({Native(L"none.json"), L"-o", Native(L"lines.txt")}), 2);
    EXPECT_EQ(console.errors.find(
                  "controller_cli: The jobs file cannot be used: " + text::ToUtf8(Native(L"none.json")) + ": "),
              0U);
    EXPECT_FALSE(platform::Exists(directory / L"lines.txt"));
    EXPECT_TRUE(host.Requests().empty());
}

TEST_F(ShortOptionCommandsTest, WhatIsWrongInAJobsFileIsToldWithItsPlace) {
    WriteTextFile(directory / L"jobs.json", "{\"EnqueueJobs\":[\n {\"outputDirectory\":\"x\"}]}");
    EXPECT_EQ(Run({Native(L"jobs.json"), L"-o", Native(L"lines.txt")}), 2);
    EXPECT_EQ(console.errors, "controller_cli: The jobs file cannot be used: " + text::ToUtf8(Native(L"jobs.json")) +
                                  ", line 2, column 3: EnqueueJobs[0].outputDirectory: there is no such member\n");
    EXPECT_FALSE(platform::Exists(directory / L"lines.txt"));
    EXPECT_TRUE(host.Requests().empty());
}

TEST_F(ShortOptionCommandsTest, ARefusedJobGivesOneAndTheReasonOfTheHost) {
    WriteJobsFile(LR"({"inputFileSets":[["a.stl"],["b.stl"],[],["a.stl"]],"scenario":{"id":"r"},"outputDir":"o"})");
    enqueued = {{L"id12", 12}, {}, {}, {}};
    reasons = {{}, {L"The input file b.stl does not exist."}, {L"The input set names no file."}, {}};
    EXPECT_EQ(Run({Native(L"jobs.json")}), 1);
    EXPECT_EQ(console.output, Line("12,Queued") + Line("-1,Failed") + Line("-1,Failed") + Line("-1,Failed"));
    EXPECT_EQ(console.errors,
              Refused("line 1, column 45: EnqueueJobs[0].inputFileSets[1]", "The input file b.stl does not exist.") +
                  Refused("line 1, column 55: EnqueueJobs[0].inputFileSets[2]", "The input set names no file.") +
                  Refused("line 1, column 58: EnqueueJobs[0].inputFileSets[3]", "the host does not say why."));
}

TEST_F(ShortOptionCommandsTest, AJobsFileThatIsGoneMeanwhileGivesNoPlace) {
    host.transmitter.onSend = [this](const ScriptedTransmitter::Event& request) {
        ASSERT_TRUE(platform::RemoveFile(directory / L"jobs.json"));
        AnswerEnqueue(request);
    };
    enqueued = {{}};
    reasons = {{L"no."}};
    EXPECT_EQ(Run({Native(L"jobs.json")}), 1);
    EXPECT_EQ(console.errors, Refused("EnqueueJobs[0].inputFileSets[0]", "no."));
}

TEST_F(ShortOptionCommandsTest, AReasonForgesNoLine) {
    enqueued = {{}};
    reasons = {{L"The scenario a\nb is unknown."}};
    EXPECT_EQ(Run({Native(L"jobs.json")}), 1);
    EXPECT_EQ(std::count(console.errors.begin(), console.errors.end(), '\n'), 1);
}

TEST_F(ShortOptionCommandsTest, ARequestWithoutInputsIsToldAsSuch) {
    WriteJobsFile(L"{}");
    enqueued.clear();
    reasons = {{L"The request names no input files."}};
    EXPECT_EQ(Run({Native(L"jobs.json")}), 1);
    EXPECT_EQ(console.errors, Refused("line 1, column 17: EnqueueJobs[0]", "The request names no input files."));
}

TEST_F(ShortOptionCommandsTest, OfManyRefusalsTheFirstTwentyAreTold) {
    std::wstring sets = L"[]";
    for (int set = 1; set < 1000; ++set) {
        sets += L",[]";
    }
    WriteJobsFile(LR"({"scenario":{"id":"r"},"outputDir":"o","inputFileSets":[)" + sets + L"]}");
    enqueued.assign(1000, {});
    EXPECT_EQ(Run({Native(L"jobs.json")}), 1);
    EXPECT_EQ(std::count(console.errors.begin(), console.errors.end(), '\n'), 21);
    EXPECT_NE(console.errors.find("980 more like this.\n"), std::string::npos);
}

TEST_F(ShortOptionCommandsTest, ALogThatExistsIsNamedWhereTheReasonIsNotKnown) {
    WriteTextFile(directory / L"a.stl", "");
    WriteTextFile(directory / L"r.rb", "");
    enqueued = {{}};
    UseSettings(R"({"version":1,"logFile":"host.log"})");
    WriteTextFile(directory / L"host.log", "");
    EXPECT_EQ(Run({Native(L"jobs.json")}), 1);
    EXPECT_EQ(console.errors, Refused("line 1, column 60: EnqueueJobs[0].inputFileSets[0]",
                                      "the host does not say why. The log: " + text::ToUtf8(Native(L"host.log"))));
}

TEST_F(ShortOptionCommandsTest, OnceTheHostHasGoneTheRestFailsUnsent) {
    WriteJobsFile(LR"({"inputFileSets":[["a.stl"]]},{"inputFileSets":[["b.stl"]]},{"inputFileSets":[["c.stl"]]})");
    host.transmitter.onSend = [this](const ScriptedTransmitter::Event&) { host.transmitter.isEngineThere = false; };
    EXPECT_EQ(Run({Native(L"jobs.json")}), 3);
    EXPECT_EQ(console.output, Line("-1,Failed") + Line("-1,Failed") + Line("-1,Failed"));
    EXPECT_EQ(host.Requests().size(), 1U);
    EXPECT_NE(console.errors.find("EnqueueJobs[2]: the host did not answer;"), std::string::npos);
    EXPECT_NE(console.errors.find("The host has gone."), std::string::npos);
}

TEST_F(ShortOptionCommandsTest, ALineMayOpenWithTheFirstRequest) {
    host.transmitter.onRegister = [this](const std::wstring&, CallbackFunctor*) {
        host.transmitter.isEngineThere = false;
    };
    host.transmitter.onSend = [this](const ScriptedTransmitter::Event& request) {
        host.transmitter.isEngineThere = true;
        AnswerEnqueue(request);
    };
    EXPECT_EQ(Run({Native(L"jobs.json")}), 0);
    EXPECT_EQ(console.output, Line("12,Queued"));
}

TEST_F(ShortOptionCommandsTest, ARequestThatIsNotAnsweredGivesThree) {
    host.transmitter.onSend = nullptr;
    EXPECT_EQ(Run({Native(L"jobs.json")}), 3);
    EXPECT_EQ(console.output, Line("-1,Failed"));
    EXPECT_EQ(
        console.errors,
        "controller_cli: " + text::ToUtf8(Native(L"jobs.json")) +
            ", line 1, column 17: EnqueueJobs[0]: the host did not answer; whether jobs were made is not known.\n");
}

TEST_F(ShortOptionCommandsTest, StatusLinesAreInEnglishWhateverTheCulture) {
    UseSettings(R"({"version":1,"logFile":"","culture":"de-DE"})");
    AnswerStatus();
    EXPECT_EQ(Run({L"-s", L"3,5"}), 0);
    EXPECT_EQ(console.output, Line("3,Running") + Line("5,Unknown"));
}

TEST_F(ShortOptionCommandsTest, AnIdStandsForTheNumberOfItsJob) {
    host.jobs = {Job(3, L"a.stl", JobStatus::Running), Job(1234567, L"b.stl", JobStatus::Queued)};
    host.jobs[0].id = L"3ddaf8d";
    host.jobs[1].id = L"51104433";
    AnswerStatus();
    EXPECT_EQ(Run({L"-s", L"3, 3ddaf8d,51104433 ,0001234567,7654321"}), 0);
    EXPECT_EQ(console.output, Line("3,Running") + Line("3,Running") + Line("1234567,Unknown") +
                                  Line("1234567,Unknown") + Line("7654321,Unknown"));
    EXPECT_EQ(host.Requests().back(),
              (ScriptedTransmitter::Event{L"CheckJobStatusRequest",
                                          LR"({"CheckJobStatusRequest":["3","3","1234567","1234567","7654321"]})"}));
}

TEST_F(ShortOptionCommandsTest, TheListIsAskedForOnlyWhereANameMayBeAnId) {
    AnswerStatus();
    EXPECT_EQ(Run({L"-s", L"3,12345"}), 0);
    EXPECT_EQ(host.Requests().size(), 1U);
}

TEST_F(ShortOptionCommandsTest, WhatIsNeitherNumberNorIdIsRefusedBeforeAnythingElseIsSent) {
    host.jobs = {Job(3, L"a.stl", JobStatus::Running)};
    for (const std::wstring command : {L"-s", L"-c"}) {
        for (const std::wstring name : {L"abc", L"4294967297", L"727x", L"-3", L"+3", L"3ddaf8d", L"\xff13"}) {
            console.errors.clear();
            host.transmitter.sent.clear();
            EXPECT_EQ(Run({command, L"3," + name}), 2);
            EXPECT_EQ(console.errors, "controller_cli: " + text::ToUtf8(name) +
                                          " is neither the number nor the id of a job. See: cadjobs list\n");
            ASSERT_EQ(host.Requests().size(), 1U);
            EXPECT_EQ(host.Requests()[0].name, L"InitJobsRequest");
        }
    }
    EXPECT_EQ(console.output, "");
}

TEST_F(ShortOptionCommandsTest, AStatusThatIsNotAnsweredIsToldBesideItsLines) {
    EXPECT_EQ(Run({L"-s", L"3"}), 3);
    EXPECT_EQ(console.errors.find("controller_cli: The host did not answer within 60 s."), 0U) << console.errors;
    host.diesAt = L"CheckJobStatusRequest";
    EXPECT_EQ(Run({L"-s", L"3"}), 3);
    EXPECT_NE(console.errors.find("The host has gone."), std::string::npos);
    EXPECT_EQ(console.output, Line("3,Unknown") + Line("3,Unknown"));
}

TEST_F(ShortOptionCommandsTest, CancelSendsOneRequestAnIdAndPrintsNothing) {
    host.answers[L"CancelJobs"] = {L"CancelJobsFinish", LR"({"CancelJobsFinish":[]})"};
    EXPECT_EQ(Run({L"-c", L"3,5"}), 0);
    EXPECT_EQ(console.output, "");
    EXPECT_EQ(host.Requests(), (std::vector<ScriptedTransmitter::Event>{{L"CancelJobs", LR"({"CancelJobs":["3"]})"},
                                                                        {L"CancelJobs", LR"({"CancelJobs":["5"]})"}}));
}

/// Checked by the thread sanitizer.
TEST_F(ShortOptionCommandsTest, WhatTheHostTellsAllMayComeBeforeTheCommandIsSetUp) {
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

TEST_F(ShortOptionCommandsTest, ACancelThatIsNotAnsweredIsTold) {
    timeout = std::chrono::milliseconds(0);
    EXPECT_EQ(Run({L"-c", L"3"}), 3);
    EXPECT_EQ(console.errors, "controller_cli: The host did not answer the request to cancel job 3; whether it was "
                              "cancelled is not known.\n");
}

TEST_F(ShortOptionCommandsTest, EveryCancelIsSentHoweverLittleTimeThereIs) {
    timeout = std::chrono::milliseconds(0);
    EXPECT_EQ(Run({L"-c", L"2,3"}), 3);
    EXPECT_EQ(host.Requests().size(), 2U);
    EXPECT_NE(console.errors.find("cancel job 2, 3;"), std::string::npos) << console.errors;
    host.answers[L"CancelJobs"] = {L"CancelJobsFinish", LR"({"CancelJobsFinish":[]})"};
    EXPECT_EQ(Run({L"-c", L"2,3"}), 0);
    EXPECT_EQ(host.Requests().size(), 4U);
}

TEST_F(ShortOptionCommandsTest, OneFileIsNotTakenForTwoThings) {
    UseSettings(R"({"version":1,"logFile":"host.log","jobListFile":"list.json","stringResourceFile":"s.json"})");
    WriteTextFile(directory / L"a.stl", "solid");
    WriteTextFile(directory / L"r.rb", "exit 0");
    WriteTextFile(directory / L"host.log", "line");
    const std::wstring jobs = Native(L"jobs.json");
    const std::wstring roundabout = platform::ToNativeText(directory / L"sub\\..\\.\\jobs.json");
    // On a system that ignores case, another spelling is the same file.
    const std::wstring capital = platform::SameName(L"a", L"A") ? Native(L"JOBS.json") : jobs;
    const std::vector<std::vector<std::wstring>> table = {
        {jobs, L"-o", jobs},
        {jobs, L"-o", capital},
        {jobs, L"-l", jobs},
        {jobs, L"-o", roundabout},
        {jobs, L"-o", Native(L"new.txt"), L"-l", Native(L"new.txt")},
        {jobs, L"-o", Native(L"settings.json")},
        {jobs, L"-o", Native(L"list.json")},
        {jobs, L"-o", Native(L"host.log")},
        {jobs, L"-o", Native(L"a.stl")},
        {jobs, L"-l", Native(L"a.stl")},
        {jobs, L"-o", Native(L"r.rb")},
        {L"-s", L"3", L"-l", Native(L"settings.json")},
        {L"-c", L"3", L"-l", Native(L"list.json")},
        {L"-m", L"-l", Native(L"settings.json")},
    };
    const std::vector<std::wstring> names = {L"jobs.json", L"settings.json", L"a.stl", L"r.rb"};
    const std::string before = ContentsOf(names);
    for (const auto& arguments : table) {
        console.errors.clear();
        EXPECT_EQ(Run(arguments), 2) << text::ToUtf8(arguments.back());
        EXPECT_NE(console.errors.find(" is named twice, as "), std::string::npos) << console.errors;
    }
    EXPECT_EQ(ContentsOf(names), before);
    EXPECT_TRUE(ReadTextFile(directory / L"host.log").starts_with("line"));
    EXPECT_FALSE(platform::Exists(directory / L"new.txt"));
    EXPECT_FALSE(platform::Exists(directory / L"list.json"));
    EXPECT_EQ(host.Requests().size() + static_cast<std::size_t>(host.startCount + host.foregroundCount), 0U);
}

TEST_F(ShortOptionCommandsTest, TheHostsLogMayBeThisProgramsToo) {
    UseSettings(R"({"version":1,"logFile":"host.log"})");
    WriteTextFile(directory / L"host.log", "line\n");
    EXPECT_EQ(Run({Native(L"jobs.json"), L"-l", Native(L"host.log")}), 0);
    ControllerLogManager::Initialize(0, L"", false);
}

TEST_F(ShortOptionCommandsTest, WithoutIdsNothingIsCancelled) {
    for (const std::vector<std::wstring>& arguments :
         std::vector<std::vector<std::wstring>>{{L"-c"}, {L"-c,"}, {L"-s"}, {L"-s", L" , "}, {L"-c", L"-o", L"x"}}) {
        console.errors.clear();
        EXPECT_EQ(Run(arguments), 2);
        EXPECT_EQ(console.errors, "controller_cli: The numbers or ids of the jobs are missing.\n"
                                  "Help: controller_cli --help\n");
    }
    EXPECT_TRUE(host.Requests().empty());
}

TEST_F(ShortOptionCommandsTest, WrongUse) {
    const std::vector<std::pair<std::vector<std::wstring>, std::string>> wrong = {
        {{}, "No command was given."},
        {{L"-l", L"x.log"}, "No command was given."},
        {{L"-f", L"jobs.json"}, "-f takes no value; put a file name in front of it."},
        {{L"-fjobs.json"}, "-f takes no value;"},
        {{L"-m", L"jobs.json"}, "-m takes no value;"},
        {{L"-h", L"jobs.json"}, "The argument -h means nothing here."},
        {{L"jobs.json", L"-n"}, "The argument -n means nothing here."},
        {{L"-C1"}, "The argument -C1 means nothing here."},
        {{L"jobs.json", L"-"}, "The argument - means nothing here."},
        {{L"jobs.json", L""}, "An argument is empty."},
        {{L"jobs.json", L"-o"}, "-o takes a value."},
        {{L"-o", L"-i", L"jobs.json"}, "-o takes a value."},
        {{L"jobs.json", L"-o", L""}, "-o takes a value."},
        {{L"jobs.json", L"-o\"\""}, "-o takes a value."},
        {{L"jobs.json", L"-l"}, "-l takes a value."},
        {{L"-i"}, "-i takes a value."},
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
    EXPECT_TRUE(host.Requests().empty());
}

TEST_F(ShortOptionCommandsTest, BeingTheHostHandsItsExitCodeThrough) {
    host.foregroundExitCode = 4;
    EXPECT_EQ(Run({L"-m"}), 4);
    EXPECT_EQ(host.foregroundCount, 1);
    host.startProblem = L"no such program";
    EXPECT_EQ(Run({L"-m"}), 3);
}

TEST_F(ShortOptionCommandsTest, AHostIsStartedWhereNoneRuns) {
    host.runs = false;
    EXPECT_EQ(Run({Native(L"jobs.json")}), 0);
    EXPECT_EQ(host.startCount, 1);
}

TEST_F(ShortOptionCommandsTest, TheLogGoesToTheLogFile) {
    EXPECT_EQ(Run({Native(L"jobs.json"), L"-l", Native(L"client.log")}), 0);
    EXPECT_NE(ReadTextFile(directory / L"client.log").find("Job: 12 is added."), std::string::npos);
    ControllerLogManager::Initialize(0, L"", false);
}

} // namespace
