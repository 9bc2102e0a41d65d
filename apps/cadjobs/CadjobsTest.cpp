#include "cadjobs/Cadjobs.h"

#include <algorithm>
#include <cstdlib>
#include <sstream>

#include "formats/Messages.h"
#include "front_end/output/BuiltInStrings.h"
#include "kit/front_end/CommandContextFixture.h"
#include "platform/files/NativePath.h"

namespace {

/// `cadjobs` with a scripted host. The clock shows 2026-03-05T07:10:00Z.
class CadjobsTest : public CommandContextFixture {
protected:
    int Cadjobs(const std::vector<std::wstring>& arguments) {
        console.output.clear();
        console.errors.clear();
        return static_cast<int>(front_end::RunCadjobs(context, arguments));
    }

    /// `count` jobs with the numbers from 1 on.
    void HaveJobs(int count, JobStatus status) {
        for (int number = 1; number <= count; ++number) {
            host.jobs.emplace_back(Job(number, L"part" + std::to_wstring(number) + L".stl", status));
        }
    }

    /// The numbers in the first column of the shown table.
    std::vector<int> ShownNumbers() const {
        std::vector<int> numbers;
        std::istringstream lines(console.output);
        for (std::string line; std::getline(lines, line);) {
            if (const int number = std::atoi(line.c_str()); number > 0) {
                numbers.push_back(number);
            }
        }
        return numbers;
    }

    std::string Sent(const std::wstring& request) const {
        for (const auto& event : host.Requests()) {
            if (event.name == request) {
                return text::ToUtf8(event.payload);
            }
        }
        return {};
    }
};

TEST_F(CadjobsTest, WithoutACommandTheStateOfTheQueueHasAtMostTenLines) {
    HaveJobs(30, JobStatus::Success);
    host.jobs[3].status = JobStatus::Running;
    host.jobs[7].status = JobStatus::Queued;
    host.jobs[8].status = JobStatus::Failed;
    EXPECT_EQ(Cadjobs({}), 0);
    EXPECT_EQ(console.output.find("The host is running: process 4711, "), 0U) << console.output;
    EXPECT_NE(console.output.find("\nQueued: 1, running: 1, succeeded: 27, failed: 1, cancelled: 0\n"),
              std::string::npos);
    EXPECT_EQ(ShownNumbers(), (std::vector<int>{4, 8, 30, 29, 28, 27}));
    EXPECT_EQ(std::count(console.output.begin(), console.output.end(), '\n'), 10);
}

TEST_F(CadjobsTest, TheOverviewStartsNoHost) {
    host.runs = false;
    EXPECT_EQ(Cadjobs({}), 0);
    EXPECT_EQ(console.output, "No host is running. Commands that need one start it, or: cadjobs host start\n"
                              "Help: cadjobs --help\n");
    EXPECT_EQ(host.startCount, 0);
}

TEST_F(CadjobsTest, APausedQueueIsCalledSoInTheOverview) {
    host.queueState.isPaused = true;
    EXPECT_EQ(Cadjobs({}), 0);
    EXPECT_NE(console.output.find("The queue is paused. Queued: 0, "), std::string::npos) << console.output;
    EXPECT_EQ(Cadjobs({L"--json"}), 0);
    EXPECT_NE(console.output.find(R"("queue":{"paused":true,"queued":0,)"), std::string::npos) << console.output;
}

TEST_F(CadjobsTest, ATerminalShowsTheNewestFiftyJobs) {
    HaveJobs(60, JobStatus::Success);
    console.BecomeTerminal(120, 24);
    EXPECT_EQ(Cadjobs({L"list"}), 0);
    EXPECT_EQ(ShownNumbers().size(), 50U);
    EXPECT_EQ(ShownNumbers().front(), 11);
    EXPECT_TRUE(console.output.ends_with("The newest 50 of 60 jobs. All of them: --all\n")) << console.output;
    EXPECT_EQ(Cadjobs({L"list", L"--all"}), 0);
    EXPECT_EQ(ShownNumbers().size(), 60U);
}

TEST_F(CadjobsTest, APipeGetsAllJobsUnlessTheUserSaysHowMany) {
    HaveJobs(60, JobStatus::Success);
    EXPECT_EQ(Cadjobs({L"list"}), 0);
    EXPECT_EQ(ShownNumbers().size(), 60U);
    EXPECT_EQ(Cadjobs({L"list", L"--limit", L"2"}), 0);
    EXPECT_EQ(ShownNumbers(), (std::vector<int>{59, 60}));
    EXPECT_EQ(Cadjobs({L"list", L"--limit", L"0"}), 2);
}

TEST_F(CadjobsTest, AListIsSortedReversedAndLimited) {
    HaveJobs(4, JobStatus::Success);
    host.jobs[0].priority = 5;
    host.jobs[1].priority = -5;
    host.jobs[2].priority = 9;
    EXPECT_EQ(Cadjobs({L"list", L"--sort", L"priority"}), 0);
    EXPECT_EQ(ShownNumbers(), (std::vector<int>{2, 4, 1, 3}));
    EXPECT_EQ(Cadjobs({L"list", L"--sort", L"priority", L"--reverse", L"--limit", L"2"}), 0);
    EXPECT_EQ(ShownNumbers(), (std::vector<int>{3, 1}));
}

TEST_F(CadjobsTest, ConditionsOfAListMustAllHold) {
    HaveJobs(4, JobStatus::Failed);
    host.jobs[0].endTime = L"2026-03-05T07:09:00Z";
    host.jobs[1].endTime = L"2026-03-04T07:09:00Z";
    host.jobs[1].scenario.displayName = L"Checks : Wall";
    host.jobs[2].status = JobStatus::Running;
    EXPECT_EQ(Cadjobs({L"list", L"--state", L"failed,running"}), 0);
    EXPECT_EQ(ShownNumbers(), (std::vector<int>{1, 2, 3, 4}));
    EXPECT_EQ(Cadjobs({L"list", L"--state", L"Failed", L"--older-than", L"1h"}), 0);
    EXPECT_EQ(ShownNumbers(), (std::vector<int>{2}));
    EXPECT_EQ(Cadjobs({L"list", L"--newer-than", L"1h"}), 0);
    EXPECT_EQ(ShownNumbers(), (std::vector<int>{1}));
    EXPECT_EQ(Cadjobs({L"list", L"--scenario", L"wall"}), 0);
    EXPECT_EQ(ShownNumbers(), (std::vector<int>{2}));
    EXPECT_EQ(Cadjobs({L"list", L"--label", L"checks"}), 0);
    EXPECT_EQ(ShownNumbers(), (std::vector<int>{2}));
    EXPECT_EQ(Cadjobs({L"list", L"--text", L"PART3"}), 0);
    EXPECT_EQ(ShownNumbers(), (std::vector<int>{3}));
    EXPECT_EQ(Cadjobs({L"list", L"--state", L"lost"}), 2);
    EXPECT_NE(console.errors.find("cadjobs: lost is no state of a job: "), std::string::npos) << console.errors;
}

TEST_F(CadjobsTest, TheUserChoosesTheColumns) {
    HaveJobs(1, JobStatus::Success);
    EXPECT_EQ(Cadjobs({L"list", L"--columns", L"number,id,priority"}), 0);
    EXPECT_EQ(console.output, "Job  Id   Priority\n  1  id1         0\n");
    EXPECT_EQ(Cadjobs({L"list", L"--columns", L"colour"}), 2);
    EXPECT_EQ(Cadjobs({L"list", L"--sort", L"result"}), 2);
}

TEST_F(CadjobsTest, GroupsHaveATableEach) {
    HaveJobs(3, JobStatus::Success);
    host.jobs[1].status = JobStatus::Failed;
    EXPECT_EQ(Cadjobs({L"list", L"--group-by", L"state", L"--columns", L"number"}), 0);
    EXPECT_EQ(console.output, "State Success: 2\nJob\n  1\n  3\n\nState Failed: 1\nJob\n  2\n");
}

TEST_F(CadjobsTest, JobsAreNamedByRangeLastAndFailed) {
    HaveJobs(6, JobStatus::Success);
    host.jobs[0].status = JobStatus::Failed;
    EXPECT_EQ(Cadjobs({L"list", L"3-5,2"}), 0);
    EXPECT_EQ(ShownNumbers(), (std::vector<int>{3, 4, 5, 2}));
    EXPECT_EQ(Cadjobs({L"list", L"last", L"failed", L"id1"}), 0);
    EXPECT_EQ(ShownNumbers(), (std::vector<int>{6, 1}));
    EXPECT_EQ(Cadjobs({L"list", L"7-9"}), 2);
    EXPECT_EQ(console.errors, "cadjobs: There is no job 7-9. See: cadjobs list\n");
}

TEST_F(CadjobsTest, ManyJobsAreDeletedOnlyAfterAQuestion) {
    HaveJobs(6, JobStatus::Success);
    host.answers[L"DeleteJobsRequest"] = {L"DeleteJobsResponse", LR"({"DeleteJobsResponse":[]})"};
    console.answer = L"n";
    EXPECT_EQ(Cadjobs({L"delete", L"1-6"}), 1);
    EXPECT_EQ(console.questions, "Delete 6 jobs? [y/N] ");
    EXPECT_EQ(console.errors, "cadjobs: Nothing was done. Without a question: --yes\n");
    EXPECT_EQ(Sent(L"DeleteJobsRequest"), "");
    console.questions.clear();
    EXPECT_EQ(Cadjobs({L"delete", L"1-5"}), 1);
    EXPECT_EQ(console.questions, "");
}

TEST_F(CadjobsTest, TheQuestionIsLeftOutWithYesAndWithoutATerminal) {
    HaveJobs(6, JobStatus::Queued);
    host.answers[L"CancelJobs"] = {L"CancelJobsFinish", L"{\"CancelJobsFinish\":[]}"};
    console.answer = L"n";
    EXPECT_EQ(Cadjobs({L"cancel", L"--state", L"Queued", L"--yes"}), 0) << console.errors;
    EXPECT_EQ(console.questions, "");
    EXPECT_NE(Sent(L"CancelJobs"), "");
    console.answer.reset();
    EXPECT_EQ(Cadjobs({L"cancel", L"1-6"}), 0);
    console.answer = L"yes";
    EXPECT_EQ(Cadjobs({L"cancel", L"1-6"}), 0);
    EXPECT_EQ(console.questions, "Cancel 6 jobs? [y/N] Cancel 6 jobs? [y/N] ");
}

TEST_F(CadjobsTest, ConditionsWithoutAMatchChangeNothing) {
    HaveJobs(2, JobStatus::Success);
    EXPECT_EQ(Cadjobs({L"cancel", L"--state", L"Queued"}), 0);
    EXPECT_EQ(Cadjobs({L"delete", L"--state", L"Failed"}), 0);
    EXPECT_EQ(Cadjobs({L"hold", L"--state", L"Queued"}), 0);
    EXPECT_EQ(Sent(L"CancelJobs") + Sent(L"DeleteJobsRequest") + Sent(L"EditJobsRequest"), "");
}

TEST_F(CadjobsTest, WhatWasDoneIsToldAsJsonToo) {
    HaveJobs(2, JobStatus::Queued);
    host.answers[L"EditJobsRequest"] = {
        L"EditJobsFinish", messages::Serialize(L"EditJobsFinish", std::vector{Status(1, JobStatus::Queued)})};
    EXPECT_EQ(Cadjobs({L"hold", L"1,2", L"--json"}), 1);
    EXPECT_EQ(console.output,
              R"({"version":1,"results":[{"number":1,"id":"id1","status":"Queued","done":true,"message":"Job 1 is on )"
              R"(hold."},{"number":2,"id":"id2","status":"Queued","done":false,"message":"Job 2 does not wait any )"
              R"(longer and was not changed."}]})"
              "\n");
    EXPECT_EQ(console.errors, "cadjobs: Job 2 does not wait any longer and was not changed.\n");
}

TEST_F(CadjobsTest, ShowTellsEverythingAboutAJob) {
    HaveJobs(1, JobStatus::Queued);
    host.jobs[0].needs = {{L"cad", 2}};
    host.jobs[0].waitReason = L"resource";
    host.jobs[0].waitName = L"cad";
    EXPECT_EQ(Cadjobs({L"show", L"last"}), 0);
    for (const char* const line :
         {"Job:       1\n", "State:     Queued\n", "Needs:     cad=2\n", "Waiting:   waits for cad\n"}) {
        EXPECT_NE(console.output.find(line), std::string::npos) << line << console.output;
    }
}

TEST_F(CadjobsTest, TheHostIsShownStartedAndMissed) {
    EXPECT_EQ(Cadjobs({L"host", L"status", L"--json"}), 0);
    EXPECT_EQ(console.output.find(R"({"version":1,"host":{"running":true,"process":4711,"since":"2026-03-05T)"), 0U)
        << console.output;
    host.runs = false;
    EXPECT_EQ(Cadjobs({L"host", L"status"}), 3);
    EXPECT_EQ(Cadjobs({L"host", L"start"}), 0);
    EXPECT_EQ(host.startCount, 1);
    EXPECT_EQ(console.output.find("The host is running: process 4711, "), 0U) << console.output;
}

TEST_F(CadjobsTest, AJobsFileComesFromStandardInput) {
    console.input =
        R"({"EnqueueJobs":[{"scenario":{"id":"1"},"outputDir":"/out","inputFileSets":[["/in/a.stl"],[]]}]})";
    JobEnqueueResult result;
    result.jobIds = {{L"id7", 7}, {}};
    result.inputSetResults = {{}, {L"It has no files."}};
    host.onRequest = [&](const std::wstring& request) {
        if (request == L"EnqueueJobs") {
            ScheduledRequest sent;
            ASSERT_TRUE(messages::Deserialize(host.Requests().back().payload, sent));
            result.requestId = sent.requestId;
            host.answers[request] = {L"EnqueueJobsFinish", messages::Serialize(L"EnqueueJobsFinish", result)};
        }
    };
    EXPECT_EQ(Cadjobs({L"add", L"-"}), 1);
    EXPECT_EQ(console.output, "Job 7 is queued: a.stl\n");
    EXPECT_EQ(console.errors, "cadjobs: -, EnqueueJobs[0].inputFileSets[1]: refused: It has no files.\n");
}

TEST_F(CadjobsTest, ABrokenJobsFileIsRefusedWithItsPlace) {
    console.input = "{\"EnqueueJobs\":\n 7}";
    EXPECT_EQ(Cadjobs({L"add", L"-"}), 2);
    EXPECT_NE(console.errors.find("cadjobs: The jobs file cannot be used: standard input, line 2, column 2: "),
              std::string::npos)
        << console.errors;
    console.input = R"({"EnqueueJob":[]})";
    EXPECT_EQ(Cadjobs({L"add", L"-"}), 2);
    EXPECT_NE(console.errors.find(R"(did you mean "EnqueueJobs"?)"), std::string::npos) << console.errors;
    EXPECT_TRUE(host.Requests().empty());
}

TEST_F(CadjobsTest, ColoursAreTheUsersChoice) {
    HaveJobs(1, JobStatus::Failed);
    EXPECT_EQ(Cadjobs({L"list", L"--color", L"always"}), 0);
    EXPECT_NE(console.output.find("\x1b[31mFailed\x1b[0m"), std::string::npos);
    EXPECT_EQ(Cadjobs({L"list", L"--color=never"}), 0);
    EXPECT_EQ(console.output.find('\x1b'), std::string::npos);
}

TEST_F(CadjobsTest, AnOutputDirectoryIsALinkWhereTheTerminalTakesIt) {
    HaveJobs(1, JobStatus::Success);
    host.jobs[0].outputDir = L"/out/part";
    console.hasLinks = true;
    EXPECT_EQ(Cadjobs({L"list"}), 0);
    EXPECT_NE(console.output.find("\x1b]8;;file:///"), std::string::npos) << console.output;
}

TEST_F(CadjobsTest, WebStartsTheServerOfThePageInTheBackground) {
    EXPECT_EQ(Cadjobs({L"web"}), 0);
    EXPECT_EQ(host.webArguments, std::vector<std::wstring>{L"--background"});
    EXPECT_EQ(Cadjobs({L"web", L"--port", L"8080", L"--read-only", L"--no-browser"}), 0);
    EXPECT_EQ(host.webArguments,
              (std::vector<std::wstring>{L"--background", L"--port", L"8080", L"--read-only", L"--no-browser"}));
    EXPECT_EQ(Cadjobs({L"web", L"--stop"}), 0);
    EXPECT_EQ(host.webArguments, std::vector<std::wstring>{L"--stop"});
}

TEST_F(CadjobsTest, WebStartsAHostWhereNoneRunsUnlessItIsToUseRunningOnesOnly) {
    host.runs = false;
    EXPECT_EQ(Cadjobs({L"web", L"--stop"}), 0);
    EXPECT_EQ(Cadjobs({L"--client-only", L"web"}), 0);
    EXPECT_EQ(host.startCount, 0);
    EXPECT_EQ(Cadjobs({L"web"}), 0);
    EXPECT_EQ(host.startCount, 1);
}

TEST_F(CadjobsTest, WebFailsAsTheServerDoes) {
    host.foregroundExitCode = 2;
    EXPECT_EQ(Cadjobs({L"web", L"--port", L"x"}), 2);
    host.startProblem = L"no such file";
    EXPECT_EQ(Cadjobs({L"web"}), 1);
    EXPECT_NE(console.errors.find("The server of the web page cannot be started: no such file"), std::string::npos);
}

TEST_F(CadjobsTest, AMistakeIsToldWithWhatMayBeMeant) {
    EXPECT_EQ(Cadjobs({L"lsit"}), 2);
    EXPECT_EQ(console.errors, "cadjobs: The argument lsit means nothing here. Did you mean list?\n"
                              "Help: cadjobs --help\n");
}

TEST_F(CadjobsTest, AFileThatIsReadIsNotTakenAsLogFile) {
    UseSettings(R"({"version":1,"logFile":"host.log"})");
    const std::wstring part = platform::ToNativeText(directory / L"part.stl");
    const std::wstring report = platform::ToNativeText(directory / L"report.rb");
    const std::wstring jobsFile = platform::ToNativeText(directory / L"jobs.json");
    const std::wstring settingsFile = platform::ToNativeText(directory / L"settings.json");
    WriteTextFile(directory / L"part.stl", "solid");
    WriteTextFile(directory / L"report.rb", "exit 0");
    WriteTextFile(directory / L"jobs.json", "{}");
    const std::vector<std::wstring> names = {L"part.stl", L"report.rb", L"jobs.json", L"settings.json"};
    const std::string before = ContentsOf(names);
    const std::vector<std::vector<std::wstring>> table = {
        {L"list", L"-l", settingsFile},      {L"run", report, part, L"-l", part}, {L"run", report, part, L"-l", report},
        {L"add", jobsFile, L"-l", jobsFile}, {L"log", L"1", L"-l", settingsFile},
    };
    for (const auto& arguments : table) {
        EXPECT_EQ(Cadjobs(arguments), 2) << text::ToUtf8(arguments.front() + L" " + arguments.back());
        EXPECT_NE(console.errors.find(" is named twice, as "), std::string::npos) << console.errors;
    }
    EXPECT_EQ(ContentsOf(names), before);
    EXPECT_TRUE(host.Requests().empty());
}

TEST_F(CadjobsTest, HelpIsInTheLanguageOfTheUser) {
    UseSettings(R"({"version":1,"logFile":"","culture":"de-DE","defaultCulture":"en-US"})");
    stringResourceFile = directory / L"strings.json";
    WriteTextFile(stringResourceFile, front_end::builtInStrings);
    const front_end::Texts german(stringResourceFile);
    front_end::CommandContext germanContext{console, german, host, nullptr, timeout, context.now, L"cadjobs"};
    EXPECT_EQ(static_cast<int>(front_end::RunCadjobs(germanContext, {L"--help"})), 0);
    EXPECT_NE(console.output.find("Aufruf: cadjobs [OPTIONEN] [BEFEHL]"), std::string::npos) << console.output;
    EXPECT_EQ(Cadjobs({L"--version"}), 0);
    EXPECT_EQ(console.output.find("cadjobs "), 0U);
}

} // namespace
