#include <gmock/gmock.h>

#include "kit/SystemHelpers.h"
#include "kit/processes/ResultsFixture.h"
#include "kit/processes/ScenarioTraces.h"
#include "platform/files/Directory.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "platform/system/Machine.h"
#include "text/Text.h"
#include "text/Time.h"

namespace {

using provenance::FileRecord;
using testing::ElementsAre;
using testing::HasSubstr;

using ProvenanceRunTest = ResultsFixture;

constexpr auto hashOfFirstInput = L"3d565a8c19015cbccfe05d782ebaee121220bd5189feb45cd102282a96ee4cbd";

} // namespace

TEST_F(ProvenanceRunTest, SaysFromWhatTheResultsWereMadeWhereAndWhen) {
    Run("write output views/front.png=picture\nwrite output report.txt=text\nwrite result success");
    const provenance::Record record = ReadRecord();
    EXPECT_EQ(record.jobId, job.jobId);
    EXPECT_TRUE(record.succeeded);
    EXPECT_EQ(record.attempt, 1);
    EXPECT_EQ(record.notReusable, L"");
    EXPECT_EQ(record.runArgument, L"fine");
    EXPECT_EQ(record.machine, platform::MachineName());
    EXPECT_EQ(record.user, platform::AccountName());
    ASSERT_TRUE(text::ReadUtcTime(record.startTime));
    EXPECT_GE(text::ReadUtcTime(record.endTime), text::ReadUtcTime(record.startTime));
    ASSERT_EQ(record.scenario.size(), 1U);
    EXPECT_EQ(record.scenario[0].path, platform::ToNativeText(job.scenarioPath));
    EXPECT_EQ(record.interpreter.path, platform::ToNativeText(settings.stepsInterpreter));
    ASSERT_EQ(record.inputs.size(), 2U);
    EXPECT_EQ(record.inputs[0].path, platform::ToNativeText(job.inputFiles[0]));
    EXPECT_EQ(record.inputs[0].size, 11);
    EXPECT_EQ(record.inputs[0].sha256, hashOfFirstInput);
    EXPECT_THAT(record.outputDirectories, ElementsAre(L"views"));
    ASSERT_EQ(record.outputs.size(), 2U);
    EXPECT_EQ(record.outputs[0].path, L"report.txt");
    EXPECT_EQ(record.outputs[0].sha256, L"982d9e3eb996f559e633f4d194def3761d909f5a3b647d1a851fead67c32c9d1");
    EXPECT_EQ(record.outputs[1].path, L"views/front.png");
}

TEST_F(ProvenanceRunTest, AFailureIsDescribedToo) {
    Run("write result failure");
    EXPECT_FALSE(ReadRecord().succeeded);
}

TEST_F(ProvenanceRunTest, TheDescriptionOfAScriptAndTheHostsContextAreIncluded) {
    WriteTextFile(directory / L"scenario.scenario.json", R"({"version":1})");
    WriteTextFile(InWorkDir(provenance::contextFileName),
                  text::ToUtf8(provenance::Serialize(provenance::RunContext{3, {}})));
    Run("exit 0");
    const provenance::Record record = ReadRecord();
    EXPECT_EQ(record.attempt, 3);
    ASSERT_EQ(record.scenario.size(), 2U);
    EXPECT_THAT(text::ToUtf8(record.scenario[1].path), HasSubstr("scenario.scenario.json"));
}

TEST_F(ProvenanceRunTest, ReportedToolsAndFilesAreIncluded) {
    WriteTextFile(directory / L"lib.txt", "library");
    const std::string file = text::ToUtf8(platform::ToNativeText(directory / L"lib.txt"));
    std::string escaped;
    for (const char character : file) {
        escaped += character == '\\' ? "\\\\" : std::string(1, character);
    }
    Run(R"(write file used_tools.json={"version":1,"tools":[{"name":"mesher","version":"2.1"}],"files":[")" + escaped +
        "\"]}");
    const provenance::Record record = ReadRecord();
    EXPECT_THAT(record.tools, ElementsAre(provenance::ToolVersion{L"mesher", L"2.1"}));
    ASSERT_EQ(record.usedFiles.size(), 1U);
    EXPECT_EQ(record.usedFiles[0].size, 7);
}

TEST_F(ProvenanceRunTest, AnUnusableReportMakesTheResultsNotReusable) {
    Run("write file used_tools.json={");
    EXPECT_THAT(text::ToUtf8(ReadRecord().notReusable), HasSubstr("used_tools.json"));
    UseNewDirectories(L"second");
    Run("exit 0");
    EXPECT_EQ(ReadRecord().notReusable, L"");
}

TEST_F(ProvenanceRunTest, AnInputThatChangesDuringTheRunMakesTheResultsNotReusable) {
    const std::string input = text::ToUtf8(job.inputFiles[1]);
    for (const char* const content : {"another content", "SECOND input"}) {
        WriteTextFile(job.inputFiles[1], "second input");
        UseNewDirectories(text::FromUtf8(content));
        Run("write file " + input + "=" + content);
        EXPECT_THAT(text::ToUtf8(ReadRecord().notReusable), HasSubstr("b.stl was changed during the run.")) << content;
    }
}

TEST_F(ProvenanceRunTest, WhatCannotBeHashedMakesTheResultsNotReusable) {
    ASSERT_TRUE(platform::EnsureDirectory(directory / L"in\\parts"));
    job.inputFiles.push_back(directory / L"in\\parts");
    Run("exit 0");
    EXPECT_TRUE(Result().succeeded);
    EXPECT_THAT(text::ToUtf8(ReadRecord().notReusable), HasSubstr("parts cannot be read"));
}

TEST_F(ProvenanceRunTest, ALinkAmongTheOutputsIsNotFollowed) {
    if (!MakeLink(job.inputFiles[0], Output(L"link"))) {
        GTEST_SKIP() << "no links here";
    }
    Run("write output report.txt=text");
    EXPECT_EQ(ReadRecord().notReusable, L"The output link is a link.");
}

TEST_F(ProvenanceRunTest, OutputsElsewhereMakeTheResultsNotReusable) {
    Run("write result with output " + text::ToUtf8(directory / L"elsewhere"));
    EXPECT_THAT(text::ToUtf8(ReadRecord().notReusable), HasSubstr("is not in the output directory"));
}

TEST_F(ProvenanceRunTest, AFileOfTheScenarioWithThisNameStays) {
    Run("write output provenance.json=mine");
    EXPECT_TRUE(Result().succeeded);
    EXPECT_EQ(ReadTextFile(RecordFile()), "mine");
}

TEST_F(ProvenanceRunTest, WithoutAnOutputDirectoryTheResultStands) {
    job.outputFolder = directory / L"missing";
    Run("exit 0");
    EXPECT_TRUE(Result().succeeded);
    EXPECT_FALSE(platform::Exists(job.outputFolder));
}

TEST_F(ProvenanceRunTest, AStoppedRunHasNone) {
    StartAndAwaitReady("be ready\nwait for request");
    RequestStop();
    EXPECT_EQ(AwaitEnd(), 0);
    EXPECT_FALSE(platform::Exists(RecordFile()));
}

TEST_F(ProvenanceRunTest, WithoutInputsTheOutputDirectoryIsTheUsersAndNotLookedAt) {
    job.inputFiles.clear();
    Run("exit 0");
    EXPECT_FALSE(platform::Exists(RecordFile()));
}

TEST_F(ProvenanceRunTest, TheSettingTurnsItOff) {
    settings.members = R"(,"provenance":false)";
    Run("exit 0");
    EXPECT_FALSE(platform::Exists(RecordFile()));
}
