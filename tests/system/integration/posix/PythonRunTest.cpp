#include <algorithm>
#include <array>
#include <string>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>

#include "kit/ZipWriter.h"
#include "kit/processes/ResultsFixture.h"
#include "kit/processes/ScenarioTraces.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "platform/system/Environment.h"
#include "text/Text.h"

namespace {

/// Scenarios in Python with the real runner. The interpreter is that of the system: another one may come first in PATH.
class PythonRunTest : public ResultsFixture {
protected:
    PythonRunTest() {
        // In a language environment without UTF-8, and without files of the interpreter in the source directory.
        for (const auto& [name, value] :
             {std::pair(L"LC_ALL", L"POSIX"), std::pair(L"PYTHONDONTWRITEBYTECODE", L"1")}) {
            before.emplace_back(name, platform::GetEnvironment(name).value_or(L""));
            platform::SetEnvironment(name, value);
        }
    }
    ~PythonRunTest() override {
        for (const auto& [name, value] : before) {
            platform::SetEnvironment(name, value);
        }
    }

    static std::string Scenario(const std::string& statement) {
        return "from controller_scenario import Job, run\n\ndef work(job: Job) -> None:\n    " + statement +
               "\n\nrun(work)\n";
    }

    void RunPython(const std::string& statement) {
        UseScenario(L"scenario.py", Scenario(statement));
        ASSERT_EQ(Start(), 0);
        ASSERT_EQ(AwaitEnd(), 0) << Log();
    }

    /// A file of the year 2001: results are not reusable if a module may have been written during the run.
    void WriteOldFile(const std::wstring& name, const std::string& content) const {
        WriteTextFile(directory / name, content);
        const std::array<timespec, 2> times{{{1'000'000'000, 0}, {1'000'000'000, 0}}};
        const std::string path = text::ToUtf8(platform::ToNativeText(directory / name));
        ASSERT_EQ(::utimensat(AT_FDCWD, path.c_str(), times.data(), 0), 0);
    }

    /// Runs a further job with the same scenario and inputs; true if it got the results of the last one.
    bool RunAgain() {
        const run_protocol::RunScenarioInfo first = job;
        UseNewDirectories(L"second");
        NameCandidates({{{first.jobId, 12}, platform::ToNativeText(first.outputFolder)}});
        EXPECT_EQ(Start(), 0);
        EXPECT_EQ(AwaitEnd(), 0);
        return FirstMessage() == L"Results of job 12.";
    }

private:
    std::vector<std::pair<std::wstring, std::wstring>> before;
};

} // namespace

TEST_F(PythonRunTest, AScriptUsesTheScenarioApi) {
    job.runArgument = L"\u00fcber";
    RunPython("job.message(f'done: {job.run_argument}')");
    EXPECT_TRUE(Result().succeeded) << Log();
    EXPECT_EQ(FirstMessage(), L"done: \u00fcber");
}

TEST_F(PythonRunTest, TextsAreUtf8WhereTheScriptDoesNotSay) {
    RunPython("print('gr\u00fc\u00dfe'); open(job.output_path('a.txt'), 'w').write('\u00e4')");
    EXPECT_EQ(Log(), "gr\u00fc\u00dfe\n");
    EXPECT_EQ(ReadTextFile(Output(L"a.txt")), "\u00e4");
}

TEST_F(PythonRunTest, WhatWasPrintedBeforeASuddenEndIsInTheLog) {
    UseScenario(L"scenario.py", "import os\nprint('last words')\nos._exit(3)\n");
    ASSERT_EQ(Start(), 0);
    EXPECT_EQ(AwaitEnd(), 0);
    EXPECT_EQ(Log(), "last words\n");
    EXPECT_EQ(FirstMessage(), L"The scenario ended with exit code 3 and wrote no result.");
}

TEST_F(PythonRunTest, ARequestToStopEndsTheScript) {
    UseScenario(
        L"scenario.py",
        Scenario("open(job.work_dir + '/ready', 'w').close()\n    while True:\n        job.stop_if_cancelled()"));
    ASSERT_EQ(Start(), 0);
    AwaitFile(job.workDir, L"ready");
    RequestStop();
    EXPECT_EQ(AwaitEnd(), 0);
    EXPECT_EQ(Log(), "");
    EXPECT_EQ(FirstMessage(), L"The scenario was stopped because it was asked to.");
}

TEST_F(PythonRunTest, APackagedScriptImportsTheFilesOfItsPackage) {
    test_support::ZipEntry manifest;
    manifest.name = "manifest.json";
    manifest.content = R"({"version":1,"displayName":"Packaged","entryPoint":"main.py","interpreter":"python3",)"
                       R"("parameterSets":[{"id":"a","displayName":"A","parameters":[)"
                       R"({"name":"size","type":"integer","defaultValue":"3"}]}]})";
    test_support::ZipEntry script;
    script.name = "main.py";
    script.content = Scenario("import shapes; job.message(shapes.area(job.parameters()['size']))");
    test_support::ZipEntry library;
    library.name = "shapes.py";
    library.content = "def area(size): return size * size\n";
    job.runArgument = L"size=4";
    UseScenario(L"packaged.esa", test_support::MakeZip({manifest, script, library}));
    ASSERT_EQ(Start(), 0);
    EXPECT_EQ(AwaitEnd(), 0) << Log();
    EXPECT_EQ(FirstMessage(), L"16") << Log();
}

TEST_F(PythonRunTest, AMissingApiIsNamed) {
    settings.apiDirectory = directory / L"no_api";
    UseScenario(L"scenario.py", Scenario("pass"));
    ASSERT_EQ(Start(), 0);
    EXPECT_EQ(AwaitEnd(), 0);
    EXPECT_THAT(FirstMessage(), testing::HasSubstr(L"The scenario API for Python was not found: there is no file "));
}

TEST_F(PythonRunTest, ProvenanceNamesInterpreterVersionAndModules) {
    WriteOldFile(L"shapes.py", "");
    RunPython("import shapes; job.write_output('a.txt', '')");
    const provenance::Record record = ReadRecord();
    EXPECT_EQ(record.notReusable, L"");
    ASSERT_EQ(record.scenario.size(), 1U);
    EXPECT_EQ(record.scenario[0].path, platform::ToNativeText(job.scenarioPath));
    EXPECT_EQ(record.interpreter.path, L"/usr/bin/python3");
    ASSERT_EQ(record.tools.size(), 1U);
    EXPECT_EQ(record.tools[0].name, L"python");
    EXPECT_TRUE(std::any_of(record.usedFiles.begin(), record.usedFiles.end(), [&](const auto& file) {
        return file.path == platform::ToNativeText(directory / L"shapes.py");
    }));
}

TEST_F(PythonRunTest, AnEqualJobGetsTheResults) {
    RunPython("job.write_output('a.txt', 'first')");
    EXPECT_TRUE(RunAgain()) << Log();
    EXPECT_EQ(ReadTextFile(Output(L"a.txt")), "first");
}

TEST_F(PythonRunTest, AJobRunsAgainWhenTheScriptHasChanged) {
    RunPython("job.write_output('a.txt', 'first')");
    WriteTextFile(job.scenarioPath, Scenario("job.write_output('a.txt', 'second')"));
    EXPECT_FALSE(RunAgain());
    EXPECT_EQ(ReadTextFile(Output(L"a.txt")), "second");
}

TEST_F(PythonRunTest, AJobRunsAgainWhenAModuleOfTheScriptHasChanged) {
    WriteOldFile(L"shapes.py", "name = 'first'\n");
    RunPython("import shapes; job.write_output('a.txt', shapes.name)");
    ASSERT_EQ(ReadRecord().notReusable, L"");
    WriteTextFile(directory / L"shapes.py", "name = 'the second'\n");
    EXPECT_FALSE(RunAgain());
    EXPECT_EQ(ReadTextFile(Output(L"a.txt")), "the second");
}
