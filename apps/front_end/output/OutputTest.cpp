#include "kit/front_end/CadjobsFixture.h"

#include "formats/Messages.h"

#include <cerrno>

namespace {

using Arguments = std::vector<std::wstring>;

/// Output that cannot be written, or whose reader has gone.
class OutputTest : public CadjobsFixture {
protected:
    OutputTest() {
        host.jobs = {Job(1, L"a.stl", JobStatus::Running)};
        host.jobs[0].workDir = directory / L"work";
        WriteTextFile(directory / L"work\\scenario.log", "layer 0\n");
        host.answers[L"CancelAllJobs"] = {
            L"CancelJobsFinish",
            messages::Serialize(L"CancelJobsFinish", std::vector{Status(1, JobStatus::Canceling)})};
        host.answers[L"FetchScenariosRequest"] = {
            L"FetchScenariosResponse",
            messages::Serialize(L"FetchScenariosResponse", std::vector<ScenarioInfo>{ScenarioInfo{}})};
        host.answers[L"TerminateRequest"] = {L"TerminateResponse", L"{\"TerminateResponse\":null}"};
    }

    platform::Event reader;
};

TEST_F(OutputTest, EachCommandSaysThatItsResultsAreLost) {
    console.outputError = {platform::ErrorKind::NoSpace, 0};
    for (const Arguments& arguments :
         {Arguments{L"--help"}, Arguments{L"--version"}, Arguments{L"list"}, Arguments{L"list", L"--json"},
          Arguments{L"watch"}, Arguments{L"wait", L"1"}, Arguments{L"log", L"1"}, Arguments{L"cancel", L"--all"},
          Arguments{L"scenarios"}, Arguments{L"host", L"stop"}}) {
        host.runs = true;
        console.errors.clear();
        EXPECT_EQ(Run(arguments), 2) << text::ToUtf8(arguments.front());
        EXPECT_EQ(console.errors, "cadjobs: Standard output cannot be written: No space left\n")
            << text::ToUtf8(arguments.front());
    }
}

TEST_F(OutputTest, AWaitEndsWhenNobodyReadsItsResults) {
    console.readerGone = reader.Handle();
    for (const Arguments& arguments : {Arguments{L"watch"}, Arguments{L"watch", L"--json"}, Arguments{L"wait", L"1"},
                                       Arguments{L"wait", L"1", L"--json"}, Arguments{L"log", L"1", L"--follow"}}) {
        reader.Raise();
        EXPECT_EQ(Run(arguments), 141) << text::ToUtf8(arguments.front());
        EXPECT_EQ(console.errors, "") << text::ToUtf8(arguments.front());
    }
}

TEST_F(OutputTest, ARequestIsCarriedOutThoughNobodyReadsItsResults) {
    console.readerGone = reader.Handle();
    reader.Raise();
    EXPECT_EQ(Run({L"cancel", L"--all"}), 0);
    EXPECT_EQ(console.output, "Job 1: Canceling\n");
}

} // namespace
