#include "kit/processes/HostProcessFixture.h"

#include "kit/TestClient.h"
#include "kit/TestProcess.h"
#include "kit/ZipWriter.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "text/Text.h"

namespace {

using test_support::Ending;

/// A script in Python from the scenario directory to its results: real host, command line, runner and interpreter.
class PythonHostTest : public HostProcessFixture {
protected:
    PythonHostTest() {
        std::string settings = UsualSettings("job_list.json");
        const std::string ruby = R"(".rb":["test_scenario"])";
        settings.replace(settings.find(ruby), ruby.size(), R"(".py":["/usr/bin/python3"])");
        settings.insert(1, R"("scenarioDirectories":[{"path":"scenarios","label":"Reports"}],)");
        WriteSettings(settings);
        WriteTextFile(directory / L"scenarios\\count.py",
                      "from controller_scenario import Job, run\n\n"
                      "def count(job: Job) -> None:\n"
                      "    job.progress(50, 'Counting')\n"
                      "    size = job.parameters()['size']\n"
                      "    job.write_output('count.txt', f'{len(job.inputs)} of size {size}')\n"
                      "    job.message('Counted')\n\n"
                      "run(count)\n");
        WriteTextFile(directory / L"scenarios\\count.scenario.json",
                      R"({"version":1,"parameterSets":[{"id":"fine","displayName":"Fine","parameters":[)"
                      R"({"name":"size","type":"integer","defaultValue":"3"}]}]})");
    }
    ~PythonHostTest() override { Cli({L"cadjobs", L"host", L"stop"}); }

    Ending Cli(const std::vector<std::wstring>& arguments) const {
        return test_support::RunToEnd(FrontEndProcess(arguments));
    }

    Ending Run(const std::wstring& scenario, const std::wstring& output,
               const std::vector<std::wstring>& options = {}) const {
        std::vector<std::wstring> arguments{L"cadjobs",  L"run",
                                            scenario,    platform::ToNativeText(directory / L"inputs.txt"),
                                            L"--output", platform::ToNativeText(directory / output)};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return Cli(arguments);
    }
};

TEST_F(PythonHostTest, AScriptOfTheScenarioDirectoryIsListedAndRuns) {
    const Ending list = Cli({L"cadjobs", L"scenarios"});
    EXPECT_EQ(list.exitCode, 0) << list.output;
    EXPECT_NE(list.output.find("Reports : count"), std::string::npos) << list.output;
    const Ending run = Run(L"count.py", L"out", {L"--argument", L"fine size=7"});
    EXPECT_EQ(run.exitCode, 0) << run.output;
    EXPECT_NE(run.output.find("Reports : count"), std::string::npos) << run.output;
    EXPECT_EQ(ReadTextFile(directory / L"out\\inputs\\count.txt"), "1 of size 7");
}

TEST_F(PythonHostTest, ASecondEqualJobGetsTheResultsOfTheFirst) {
    ASSERT_EQ(Run(L"count.py", L"out").exitCode, 0);
    const Ending second = Run(L"count.py", L"again", {L"--reuse"});
    EXPECT_EQ(second.exitCode, 0) << second.output;
    EXPECT_EQ(ReadTextFile(directory / L"again\\inputs\\count.txt"), "1 of size 3");
    EXPECT_NE(ReadTextFile(directory / L"again\\inputs\\provenance.json").find("\"resultsOf\""), std::string::npos);
}

TEST_F(PythonHostTest, APackageIsListedByItsNameAndRuns) {
    test_support::ZipEntry manifest;
    manifest.name = "manifest.json";
    manifest.content = R"({"version":1,"displayName":"Line count","entryPoint":"main.py","interpreter":"python3"})";
    test_support::ZipEntry script;
    script.name = "main.py";
    script.content = "from controller_scenario import run\nimport lines\n\nrun(lines.count)\n";
    test_support::ZipEntry library;
    library.name = "lines.py";
    library.content = "def count(job):\n    job.write_output('lines.txt', str(sum(1 for _ in open(job.inputs[0]))))\n";
    WriteTextFile(directory / L"scenarios\\lines.esa", test_support::MakeZip({manifest, script, library}));
    const Ending run = Run(L"lines.esa", L"out");
    EXPECT_EQ(run.exitCode, 0) << run.output;
    EXPECT_NE(run.output.find("Reports : Line count"), std::string::npos) << run.output;
    EXPECT_EQ(ReadTextFile(directory / L"out\\inputs\\lines.txt"), "1");
}

TEST_F(PythonHostTest, ACancelledScriptEndsWithoutAResult) {
    WriteTextFile(directory / L"endless.py", "from controller_scenario import Job, run\n\n"
                                             "def wait(job: Job) -> None:\n"
                                             "    while True:\n"
                                             "        job.progress(1, 'Waiting')\n\n"
                                             "run(wait)\n");
    StartHost();
    TestClient frontEnd(endpointName);
    const auto jobs = frontEnd.Enqueue(JobsFileFor("endless.py", 1));
    ASSERT_FALSE(jobs.at(0).id.empty());
    frontEnd.AwaitStatus(jobs[0].id, JobStatus::Running);
    Await("progress of the job",
          [&] { return platform::Exists(WorkDirOf(jobs[0].id) + L"\\progress_info_list.json"); });
    frontEnd.Cancel(jobs[0].id);
    frontEnd.AwaitStatus(jobs[0].id, JobStatus::Canceled);
    Await("end of the job", [&] { return platform::Exists(WorkDirOf(jobs[0].id) + L"\\used_tools.json"); });
    EXPECT_EQ(ReadTextFile(WorkDirOf(jobs[0].id) + L"\\scenario.log"), "");
}

} // namespace
