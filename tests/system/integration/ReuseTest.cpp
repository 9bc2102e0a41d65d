#include <algorithm>
#include <functional>
#include <utility>

#include <gmock/gmock.h>

#include "kit/SystemHelpers.h"
#include "kit/ZipWriter.h"
#include "kit/processes/ResultsFixture.h"
#include "platform/files/Directory.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "text/Text.h"

namespace {

constexpr auto usualSteps = "print it runs\nwrite output views/front.png=picture\nwrite output report.txt=text";

/// Runs one job, then another one for which the host names the first.
class ReuseTest : public ResultsFixture {
protected:
    void RunFirst(const std::string& steps = usualSteps) {
        settings.members = R"(,"toolVersions":{"mesher":"1"})";
        Run(steps);
        ASSERT_TRUE(Result().succeeded) << Log();
        first = job;
        UseNewDirectories(L"second");
    }

    provenance::Candidate First() const { return {{first.jobId, 12}, platform::ToNativeText(first.outputFolder)}; }

    /// True if the results were taken over; false if the scenario ran.
    bool RunSecond() {
        NameCandidates({First()});
        EXPECT_EQ(Start(), 0);
        EXPECT_EQ(AwaitEnd(), 0);
        const bool hasRun = platform::Exists(InWorkDir(L"scenario.log"));
        EXPECT_EQ(FirstMessage() == L"Results of job 12.", !hasRun);
        return !hasRun;
    }

    std::wstring FirstOutput(const std::wstring& name) const {
        return platform::ResolveAgainst(first.outputFolder, name);
    }

    /// Changes something after the first job: then the scenario must run, and in an empty output directory.
    void ExpectRunAfter(const std::function<void()>& change) {
        RunFirst();
        change();
        EXPECT_FALSE(RunSecond());
        EXPECT_EQ(platform::Exists(Output(L"report.txt")), true);
        EXPECT_EQ(ReadRecord().resultsOf, std::nullopt);
    }

    run_protocol::RunScenarioInfo first;
};

} // namespace

TEST_F(ReuseTest, AnEqualJobGetsTheResultsWithoutRunning) {
    RunFirst("print it runs\nwrite output views/front.png=picture\nwrite result with output " +
             text::ToUtf8(Output(L"views\\front.png")));
    ASSERT_TRUE(RunSecond());
    EXPECT_TRUE(Result().succeeded);
    EXPECT_EQ(ReadTextFile(Output(L"views\\front.png")), "picture");
    EXPECT_THAT(Result().outputFiles, testing::ElementsAre(platform::ToNativeText(Output(L"views\\front.png"))));
    const provenance::Record record = ReadRecord();
    EXPECT_EQ(record.jobId, L"b0b");
    EXPECT_EQ(record.resultsOf, (provenance::JobName{L"3f9a0c1", 12}));
    EXPECT_EQ(record.outputs.size(), 1U);
    // A later change of the copy leaves the first job's file as it is.
    WriteTextFile(Output(L"views\\front.png"), "changed");
    EXPECT_EQ(ReadTextFile(FirstOutput(L"views\\front.png")), "picture");
}

TEST_F(ReuseTest, ReusedResultsAreReusedAsThoseOfTheJobThatMadeThem) {
    RunFirst();
    ASSERT_TRUE(RunSecond());
    const provenance::Candidate second{{L"b0b", 13}, platform::ToNativeText(job.outputFolder)};
    UseNewDirectories(L"third");
    NameCandidates({second});
    ASSERT_EQ(Start(), 0);
    EXPECT_EQ(AwaitEnd(), 0);
    EXPECT_EQ(FirstMessage(), L"Results of job 12.");
}

TEST_F(ReuseTest, EmptyFilesAndDirectoriesAndPermissionsAreCopied) {
    RunFirst("write output empty.txt=\nwrite output bin/tool=x");
    ASSERT_TRUE(platform::EnsureDirectory(FirstOutput(L"bin")));
    const auto permissions = PermissionsOf(FirstOutput(L"bin\\tool"));
    ASSERT_TRUE(RunSecond());
    EXPECT_EQ(ReadTextFile(Output(L"empty.txt")), "");
    EXPECT_EQ(PermissionsOf(Output(L"bin\\tool")), permissions);
}

TEST_F(ReuseTest, ThereIsNoReuseWithoutCandidates) {
    RunFirst();
    NameCandidates({});
    ASSERT_EQ(Start(), 0);
    EXPECT_EQ(AwaitEnd(), 0);
    EXPECT_TRUE(platform::Exists(InWorkDir(L"scenario.log")));
}

TEST_F(ReuseTest, AnUnusableCandidateLeavesTheOthers) {
    RunFirst();
    NameCandidates({{{L"abc", 1}, platform::ToNativeText(directory / L"missing")},
                    {{L"wrong", 2}, First().outputDirectory},
                    First()});
    ASSERT_EQ(Start(), 0);
    EXPECT_EQ(AwaitEnd(), 0);
    EXPECT_EQ(FirstMessage(), L"Results of job 12.");
}

TEST_F(ReuseTest, AnInputWithAnotherContent) {
    ExpectRunAfter([&] { WriteTextFile(job.inputFiles[1], "SECOND input"); });
}

TEST_F(ReuseTest, AnInputWithAnotherName) {
    ExpectRunAfter([&] {
        job.inputFiles[1] = directory / L"in\\c.stl";
        WriteTextFile(job.inputFiles[1], "second input");
    });
}

TEST_F(ReuseTest, AnInputInAnotherDirectory) {
    ExpectRunAfter([&] {
        job.inputFiles[1] = directory / L"other\\b.stl";
        WriteTextFile(job.inputFiles[1], "second input");
    });
}

TEST_F(ReuseTest, AnotherOrderOfTheInputs) {
    ExpectRunAfter([&] { std::swap(job.inputFiles[0], job.inputFiles[1]); });
}

TEST_F(ReuseTest, AnotherNumberOfInputs) {
    ExpectRunAfter([&] { job.inputFiles.pop_back(); });
}

TEST_F(ReuseTest, OneInputTwice) {
    ExpectRunAfter([&] { job.inputFiles.push_back(job.inputFiles[0]); });
}

TEST_F(ReuseTest, AnotherArgument) {
    ExpectRunAfter([&] { job.runArgument = L"coarse"; });
}

TEST_F(ReuseTest, AnotherContentOfTheScenario) {
    ExpectRunAfter([&] { UseSteps(std::string(usualSteps) + "\nprint more"); });
}

TEST_F(ReuseTest, AnotherPathOfTheScenario) {
    ExpectRunAfter([&] { UseScenario(L"moved.steps", usualSteps); });
}

TEST_F(ReuseTest, ANewDescriptionBesideTheScenario) {
    ExpectRunAfter([&] { WriteTextFile(directory / L"scenario.scenario.json", R"({"version":1})"); });
}

TEST_F(ReuseTest, AnotherVersionOfATool) {
    ExpectRunAfter([&] { settings.members = R"(,"toolVersions":{"mesher":"2"})"; });
}

TEST_F(ReuseTest, AnotherInterpreter) {
    ExpectRunAfter([&] {
        const std::wstring copy = directory / (std::wstring(L"other") + platform::programExtension);
        WriteTextFile(copy, ReadTextFile(settings.stepsInterpreter));
        if (const auto permissions = PermissionsOf(settings.stepsInterpreter)) {
            SetPermissions(copy, *permissions);
        }
        settings.stepsInterpreter = copy;
    });
}

TEST_F(ReuseTest, AChangedOutput) {
    ExpectRunAfter([&] { WriteTextFile(FirstOutput(L"views\\front.png"), "PICTURE"); });
}

TEST_F(ReuseTest, AMissingOutput) {
    ExpectRunAfter([&] { EXPECT_TRUE(platform::RemoveFile(FirstOutput(L"report.txt"))); });
}

TEST_F(ReuseTest, AnAddedOutput) {
    ExpectRunAfter([&] { WriteTextFile(FirstOutput(L"views\\more.png"), ""); });
}

TEST_F(ReuseTest, AnAddedDirectory) {
    ExpectRunAfter([&] { EXPECT_TRUE(platform::EnsureDirectory(FirstOutput(L"more"))); });
}

TEST_F(ReuseTest, AnOutputThatBecameALink) {
    ExpectRunAfter([&] {
        ASSERT_TRUE(platform::RenameFile(FirstOutput(L"report.txt"), directory / L"report.txt"));
        if (!MakeLink(directory / L"report.txt", FirstOutput(L"report.txt"))) {
            WriteTextFile(FirstOutput(L"report.txt"), "no links here");
        }
    });
}

TEST_F(ReuseTest, AMissingOrUnreadableRecord) {
    ExpectRunAfter([&] { WriteTextFile(FirstOutput(L"provenance.json"), "{"); });
}

TEST_F(ReuseTest, ARecordThatLeadsElsewhere) {
    WriteTextFile(directory / L"secret.txt", "text");
    ExpectRunAfter([&] {
        std::string record = ReadTextFile(FirstOutput(L"provenance.json"));
        const std::string name = "\"report.txt\"";
        record.replace(record.find(name), name.size(), "\"../../secret.txt\"");
        WriteTextFile(FirstOutput(L"provenance.json"), record);
    });
}

TEST_F(ReuseTest, AChangedFileThatTheScenarioHasLoaded) {
    const std::wstring library = directory / L"lib.txt";
    WriteTextFile(library, "library");
    std::string path = text::ToUtf8(platform::ToNativeText(library));
    std::replace(path.begin(), path.end(), '\\', '/');
    RunFirst(std::string(usualSteps) + "\nwrite file used_tools.json={\"files\":[\"" + path + "\"]}");
    // As for a file that was written long before: how much before the run it was depends on the machine.
    job.outputFolder = first.outputFolder;
    provenance::Record record = ReadRecord();
    record.notReusable.clear();
    WriteTextFile(FirstOutput(provenance::fileName), text::ToUtf8(provenance::Serialize(record)));
    UseNewDirectories(L"third");
    EXPECT_TRUE(RunSecond());
    UseNewDirectories(L"fourth");
    WriteTextFile(library, "LIBRARY");
    EXPECT_FALSE(RunSecond());
}

TEST_F(ReuseTest, AFailedJobIsNotReused) {
    Run("print it runs\nwrite result failure");
    first = job;
    UseNewDirectories(L"second");
    EXPECT_FALSE(RunSecond());
}

TEST_F(ReuseTest, AnotherFileOfAPackage) {
    const auto usePackage = [&](const std::string& data) {
        std::vector<test_support::ZipEntry> entries(3);
        entries[0].name = "manifest.json";
        entries[0].content =
            R"({"version":1,"displayName":"P","entryPoint":"main.steps","interpreter":"test_scenario"})";
        entries[1].name = "main.steps";
        entries[1].content = "print it runs";
        entries[2].name = "data.txt";
        entries[2].content = data;
        UseScenario(L"packaged.esa", test_support::MakeZip(entries));
    };
    usePackage("one");
    ASSERT_EQ(Start(), 0);
    ASSERT_EQ(AwaitEnd(), 0) << text::ToUtf8(FirstMessage());
    first = job;
    UseNewDirectories(L"second");
    EXPECT_TRUE(RunSecond());
    UseNewDirectories(L"third");
    usePackage("two");
    EXPECT_FALSE(RunSecond());
}
