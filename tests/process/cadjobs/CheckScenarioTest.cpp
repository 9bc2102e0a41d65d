#include "cadjobs/Cadjobs.h"

#include <algorithm>
#include <string>
#include <vector>

#include "kit/TestProcess.h"
#include "kit/front_end/CommandContextFixture.h"
#include "platform/files/Directory.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "platform/system/Environment.h"

namespace {

std::string Quoted(const std::wstring& path) {
    std::string quoted = text::ToUtf8(path);
    std::replace(quoted.begin(), quoted.end(), '\\', '/');
    return "\"" + quoted + "\"";
}

/// `cadjobs check`, with the real program that runs scenarios and scenarios of steps.
class CheckScenarioTest : public CommandContextFixture {
protected:
    CheckScenarioTest() {
        context.stop = stop.Handle();
        UseSettings(R"({"version":1,"logFile":"","scenarioRunner":)" +
                    Quoted(test_support::ProgramPath(L"scenario_runner")) + R"(,"interpreters":{".steps":[)" +
                    Quoted(test_support::ProgramPath(L"test_scenario")) + "]}}");
        WriteTextFile(input, "solid");
    }

    int Check(std::vector<std::wstring> arguments) {
        arguments.insert(arguments.begin(), L"check");
        console.output.clear();
        return static_cast<int>(front_end::RunCadjobs(context, arguments));
    }

    std::wstring Script(const std::string& steps) {
        WriteTextFile(directory / L"wall.steps", steps);
        return directory / L"wall.steps";
    }

    /// The directory of a package whose scenario takes an STL file.
    std::wstring Package(const std::string& steps) {
        WriteTextFile(directory / L"wall\\main.steps", steps);
        WriteTextFile(directory / L"wall\\manifest.json",
                      R"({"version":1,"displayName":"Wall","inputs":[{"cadName":"STL","extensions":["stl"]}],)"
                      R"("entryPoint":"main.steps","interpreter":"test_scenario"})");
        WriteTextFile(directory / L"wall\\tests\\input.STL", "solid");
        return directory / L"wall";
    }

    const std::wstring input = directory / L"part.stl";
};

TEST_F(CheckScenarioTest, APackagedScenarioRunsOnItsTestInput) {
    EXPECT_EQ(Check({Package("print hello\nwrite result success")}), 0) << console.errors;
    EXPECT_EQ(console.output, "ok     description: Wall\nok     inputs: input.STL\nok     run: its own words\n");
}

TEST_F(CheckScenarioTest, AFailedRunIsToldWithTheEndOfItsOutput) {
    EXPECT_EQ(Check({Script("print what happened\nwrite result failure"), input}), 1) << console.errors;
    EXPECT_NE(console.output.find("run: its own words\n    | what happened\n"), std::string::npos) << console.output;
}

TEST_F(CheckScenarioTest, ResultsAreKeptAndNamedWhereTheUserWants) {
    const std::wstring kept = platform::ToNativeText(directory / L"kept\\report.txt");
    EXPECT_EQ(Check({Script("write output report.txt=text\nwrite result with output " + text::ToUtf8(kept)), input,
                     L"--output", directory / L"kept"}),
              0);
    EXPECT_EQ(ReadTextFile(kept), "text");
    EXPECT_TRUE(console.output.ends_with("\n    " + text::ToUtf8(kept) + "\n")) << console.output;
}

TEST_F(CheckScenarioTest, NothingStaysInTheDirectoryForTemporaryFiles) {
    const std::wstring temporary = platform::TemporaryDirectory();
    const auto count = [&] {
        std::vector<platform::DirectoryEntry> entries;
        EXPECT_TRUE(platform::ListDirectory(temporary, entries));
        return std::count_if(entries.begin(), entries.end(),
                             [](const auto& entry) { return entry.name.starts_with(L"cadjobs-"); });
    };
    const auto before = count();
    EXPECT_EQ(Check({Package("exit 0")}), 0);
    EXPECT_EQ(Check({Package("exit 4")}), 1);
    EXPECT_EQ(count(), before);
}

TEST_F(CheckScenarioTest, InputsMustBeThoseOfTheDescription) {
    const std::wstring package = Package("exit 0");
    EXPECT_EQ(Check({package, input, input}), 1);
    EXPECT_NE(console.output.find("The scenario takes 1 input files, not 2."), std::string::npos) << console.output;
    WriteTextFile(directory / L"part.obj", "v");
    EXPECT_EQ(Check({package, directory / L"part.obj"}), 1);
    EXPECT_NE(console.output.find("part.obj is no input of the kind STL"), std::string::npos) << console.output;
    EXPECT_EQ(Check({package, directory / L"none.stl"}), 1);
    EXPECT_NE(console.output.find("There is no input file "), std::string::npos);
    EXPECT_EQ(console.output.find("run:"), std::string::npos);
}

TEST_F(CheckScenarioTest, AScriptHasNoTestInputOfItsOwn) {
    EXPECT_EQ(Check({Script("exit 0")}), 1);
    EXPECT_NE(console.output.find("inputs: There is no test input: "), std::string::npos) << console.output;
}

TEST_F(CheckScenarioTest, ABrokenDescriptionEndsTheCheck) {
    WriteTextFile(directory / L"wall.scenario.json", R"({"version":1,"timeLimitSeconds":"long"})");
    EXPECT_EQ(Check({Script("exit 0"), input}), 1);
    EXPECT_NE(console.output.find("description: "), std::string::npos);
    EXPECT_NE(console.output.find("timeLimitSeconds"), std::string::npos) << console.output;
    EXPECT_EQ(Check({Package("exit 0"), L"--json"}), 0);
    EXPECT_EQ(console.output.find(R"({"version":1,"checks":[{"name":"description","fine":true,"message":"Wall"},)"), 0U)
        << console.output;
    EXPECT_TRUE(platform::RemoveFile(directory / L"wall\\manifest.json"));
    EXPECT_EQ(Check({directory / L"wall"}), 1);
    EXPECT_NE(console.output.find("manifest.json"), std::string::npos) << console.output;
}

TEST_F(CheckScenarioTest, WhatDoesNotExistIsWrongUsage) {
    EXPECT_EQ(Check({directory / L"none.rb", input}), 2);
    EXPECT_NE(console.errors.find("cadjobs: There is no scenario "), std::string::npos) << console.errors;
}

TEST_F(CheckScenarioTest, CtrlCStopsTheScenario) {
    stop.Raise();
    EXPECT_EQ(Check({Script("wait for request"), input}), 130);
}

} // namespace
