#include "formats/ResultFile.h"

#include <gtest/gtest.h>

#include "kit/LogCapture.h"
#include "kit/TemporaryDirectory.h"
#include "platform/files/Directory.h"
#include "platform/files/FileSystem.h"

using run_protocol::RemoveResult;
using run_protocol::ResultExists;
using run_protocol::RunScenarioResult;
using run_protocol::WriteResult;

namespace {

class ResultFileTest : public testing::Test {
protected:
    const TemporaryDirectory workDir;
    const std::wstring path = workDir / run_protocol::resultFileName;
    const LogCapture log;
};

} // namespace

TEST_F(ResultFileTest, AFailedResultHasTheProblemAsItsOnlyMessage) {
    const RunScenarioResult expected{L"3f9a0c1", false, {{1, L"It did not start."}}, {}};
    EXPECT_EQ(run_protocol::FailedResult(L"3f9a0c1", L"It did not start."), expected);
}

TEST_F(ResultFileTest, AResultIsWrittenInPlaceOfTheEarlierOne) {
    EXPECT_FALSE(ResultExists(workDir.Path()));
    ASSERT_TRUE(WriteResult(workDir.Path(), {L"3f9a0c1", true, {}, {}}));
    ASSERT_TRUE(WriteResult(workDir.Path(), {L"3f9a0c1", false, {}, {}}));
    EXPECT_TRUE(ResultExists(workDir.Path()));
    EXPECT_EQ(ReadTextFile(path),
              R"({"version":1,"jobId":"3f9a0c1","succeeded":false,"messages":[],"outputFiles":[]})");
}

TEST_F(ResultFileTest, AResultWithoutItsWorkDirectoryIsNotWritten) {
    EXPECT_FALSE(WriteResult(workDir / L"removed", {}));
    EXPECT_FALSE(platform::Exists(workDir / L"removed"));
}

TEST_F(ResultFileTest, AnEarlierResultIsRemoved) {
    WriteTextFile(path, "{");
    EXPECT_TRUE(RemoveResult(workDir.Path()));
    EXPECT_FALSE(ResultExists(workDir.Path()));
}

TEST_F(ResultFileTest, WithoutAnEarlierResultThereIsNothingToRemove) {
    EXPECT_TRUE(RemoveResult(workDir.Path()));
}

TEST_F(ResultFileTest, WhatIsNoFileIsNotRemoved) {
    ASSERT_TRUE(platform::CreateNewDirectory(path));
    EXPECT_FALSE(RemoveResult(workDir.Path()));
    EXPECT_TRUE(ResultExists(workDir.Path()));
}
