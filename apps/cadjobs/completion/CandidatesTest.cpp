#include "cadjobs/Cadjobs.h"

#include "cadjobs/completion/CompletionScripts.h"
#include "formats/Messages.h"
#include "kit/front_end/CommandContextFixture.h"

namespace {

/// The hidden subcommand `complete`, with a scripted host.
class CandidatesTest : public CommandContextFixture {
protected:
    std::string Complete(std::vector<std::wstring> words) {
        words.insert(words.begin(), {L"complete", L"--"});
        console.output.clear();
        EXPECT_EQ(static_cast<int>(front_end::RunCadjobs(context, words)), 0);
        EXPECT_EQ(console.errors, "");
        return console.output;
    }

    void HaveScenarios() {
        const std::vector<ScenarioInfo> scenarios = {{L"17", L"", L"/s/mesh_report.rb", L"Mesh report", {}},
                                                     {L"18", L"", L"/s/a/wall.rb", L"Wall", {}},
                                                     {L"19", L"", L"/s/b/wall.rb", L"Other wall", {}}};
        host.answers[L"FetchScenariosRequest"] = {L"FetchScenariosResponse",
                                                  messages::Serialize(L"FetchScenariosResponse", scenarios)};
    }
};

TEST_F(CandidatesTest, SubcommandsAreDescribedAndAGroupIsNamedOnce) {
    const std::string all = Complete({L""});
    EXPECT_EQ(all.find("words\nrun\tone job for each INPUT, "), 0U) << all;
    EXPECT_NE(all.find("\nhost\tthe process that runs the jobs\n"), std::string::npos);
    EXPECT_EQ(all.find("host", all.find("\nhost\t") + 6), std::string::npos) << all;
    EXPECT_EQ(all.find("\ncomplete\t"), std::string::npos);
    EXPECT_EQ(Complete({L"host", L"sta"}),
              "words\nstart\tstart the host in the background\nstatus\twhether a host runs\n");
}

TEST_F(CandidatesTest, OptionsAreThoseOfTheSubcommand) {
    EXPECT_EQ(Complete({L"log", L"--f"}), "words\n--follow\tgo on until the job has ended\n");
    EXPECT_EQ(Complete({L"log", L"--a"}), "words\n--attempt\tthe log of this earlier attempt of the job\n");
    EXPECT_EQ(Complete({L"pause", L"--f"}), "words\n");
    EXPECT_EQ(Complete({L"--ver"}), "words\n--version\tthe version\n");
}

TEST_F(CandidatesTest, ValuesOfOptionsAreThoseThatTheirCommandsTake) {
    EXPECT_EQ(Complete({L"list", L"--state=Failed,De"}), "words\n--state=Failed,Dequeued\tDequeued\n");
    EXPECT_EQ(Complete({L"list", L"--group-by", L"s"}), "words\nstate\tState\nscenario\tScenario\n");
    EXPECT_EQ(Complete({L"list", L"--color", L"al"}), "words\nalways\t\n");
    EXPECT_EQ(Complete({L"completion", L"po"}), "words\npowershell\t\n");
}

TEST_F(CandidatesTest, EveryOfferedColumnSortsOrGroups) {
    for (const wchar_t* const option : {L"--sort", L"--group-by", L"--columns"}) {
        std::istringstream lines(Complete({L"list", option, L""}));
        std::string line;
        std::getline(lines, line);
        int count = 0;
        for (; std::getline(lines, line); ++count) {
            const std::wstring column = text::FromUtf8(line.substr(0, line.find('\t')));
            EXPECT_EQ(static_cast<int>(front_end::RunCadjobs(context, {L"list", option, column})), 0) << line;
        }
        EXPECT_GT(count, 4);
    }
}

TEST_F(CandidatesTest, JobsComeNewestFirstWithScenarioInputAndState) {
    host.jobs = {Job(9, L"a.stl", JobStatus::Success), Job(10, L"b.stl", JobStatus::Running)};
    EXPECT_EQ(Complete({L"show", L""}), "words\n10\tMesh report, b.stl: Running\n9\tMesh report, a.stl: Success\n"
                                        "last\tthe newest job\nfailed\tall jobs that have failed\n");
    EXPECT_EQ(Complete({L"wait", L"9,1"}), "words\n9,10\tMesh report, b.stl: Running\n");
    EXPECT_EQ(Complete({L"run", L"a.rb", L"--after", L"9"}), "words\n9\tMesh report, a.stl: Success\n");
}

TEST_F(CandidatesTest, OnlyJobsAreOfferedThatTheSubcommandCanChange) {
    host.jobs = {Job(1, L"a", JobStatus::Success), Job(2, L"a", JobStatus::Running), Job(3, L"a", JobStatus::Queued)};
    const auto numbers = [&](const wchar_t* subcommand) {
        std::istringstream lines(Complete({subcommand, L""}));
        std::string found;
        for (std::string line; std::getline(lines, line);) {
            found += std::isdigit(static_cast<unsigned char>(line[0])) != 0 ? line[0] : '\0';
        }
        std::erase(found, '\0');
        return found;
    };
    EXPECT_EQ(numbers(L"cancel"), "32");
    EXPECT_EQ(numbers(L"hold"), "3");
    EXPECT_EQ(numbers(L"delete"), "31");
    EXPECT_EQ(numbers(L"again"), "1");
}

TEST_F(CandidatesTest, ScenariosHaveTheNamesThatTheSubcommandTakes) {
    HaveScenarios();
    EXPECT_EQ(Complete({L"run", L""}), "files\nmesh_report.rb\tMesh report\n18\tWall\n19\tOther wall\n");
    EXPECT_EQ(Complete({L"parameters", L"17"}), "words\n17\tMesh report\n");
    EXPECT_EQ(Complete({L"list", L"--scenario", L"Mesh"}).find("words\nMesh report\t"), 0U);
}

TEST_F(CandidatesTest, AnArgumentNamesASetThenItsValues) {
    HaveScenarios();
    const std::vector<ScenarioParameterSetInfo> sets = {
        {L"standard", L"Standard", L"", {{L"size", L"integer", L"800", {L"400", L"800"}}}},
        {L"large", L"Large", L"", {{L"size", L"integer", L"1600", {}}}}};
    host.answers[L"FetchScenarioParameterSetsRequest"] = {
        L"FetchScenarioParameterSetsResponse", messages::Serialize(L"FetchScenarioParameterSetsResponse", sets)};
    EXPECT_EQ(Complete({L"run", L"mesh_report.rb", L"--argument", L""}),
              "words\nstandard\tStandard\nlarge\tLarge\nsize=400\tStandard\nsize=800\tStandard\n");
    EXPECT_EQ(Complete({L"run", L"17", L"--argument", L"large s"}), "words\nlarge size=1600\tLarge\n");
    EXPECT_EQ(Complete({L"run", L"unknown.rb", L"--argument", L""}), "words\n");
}

TEST_F(CandidatesTest, FilesAreLeftToTheShell) {
    EXPECT_EQ(Complete({L"add", L""}), "files\n");
    EXPECT_EQ(Complete({L"run", L"a.rb", L"b"}), "files\n");
    EXPECT_EQ(Complete({L"run", L"a.rb", L"--output", L""}), "directories\n");
}

TEST_F(CandidatesTest, WithoutAHostThereIsSilenceAndNoneIsStarted) {
    host.runs = false;
    EXPECT_EQ(Complete({L"show", L""}), "words\n");
    EXPECT_EQ(host.startCount, 0);
    UseSettings("{broken");
    host.runs = true;
    EXPECT_EQ(Complete({L"show", L""}), "words\n");
    EXPECT_TRUE(host.Requests().empty());
}

TEST_F(CandidatesTest, NamesWithControlCharactersDoNotReachTheShell) {
    host.jobs = {Job(1, L"a\x1b[31m\n2\tb", JobStatus::Success)};
    const std::string lines = Complete({L"show", L"1"});
    EXPECT_EQ(std::count(lines.begin(), lines.end(), '\n'), 2) << lines;
    EXPECT_EQ(lines.find('\x1b'), std::string::npos);
}

TEST_F(CandidatesTest, AThousandJobsAreTooMany) {
    for (int number = 1; number <= 1000; ++number) {
        host.jobs.emplace_back(Job(number, L"a.stl", JobStatus::Success));
    }
    const std::string lines = Complete({L"show", L""});
    EXPECT_EQ(std::count(lines.begin(), lines.end(), '\n'), 501);
    EXPECT_EQ(lines.find("words\n1000\t"), 0U);
}

TEST_F(CandidatesTest, EachOfferedShellHasAScript) {
    for (const wchar_t* const shell : {L"bash", L"zsh", L"fish", L"powershell"}) {
        console.output.clear();
        EXPECT_EQ(static_cast<int>(front_end::RunCadjobs(context, {L"completion", shell})), 0);
        EXPECT_EQ(console.output, front_end::CompletionScript(shell));
        EXPECT_NE(console.output.find("cadjobs complete "), std::string::npos);
    }
    EXPECT_EQ(static_cast<int>(front_end::RunCadjobs(context, {L"completion", L"tcsh"})), 2);
    EXPECT_EQ(console.errors.find("cadjobs: There are completions for bash, zsh, fish and powershell, not for tcsh."),
              0U)
        << console.errors;
}

/// PowerShell cannot be run here: empty last words and quoting are what its script has to care for.
TEST_F(CandidatesTest, TheScriptForPowerShellMarksAnEmptyWordAndEndsTheOptions) {
    const std::string script = front_end::CompletionScript(L"powershell");
    EXPECT_NE(script.find("Register-ArgumentCompleter -Native -CommandName cadjobs -ScriptBlock {"), std::string::npos);
    EXPECT_NE(script.find("if ($wordToComplete -eq '') { $words += '=' }"), std::string::npos);
    EXPECT_NE(script.find("cadjobs complete '--' @words"), std::string::npos);
}

} // namespace
