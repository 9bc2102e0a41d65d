#include "scenario_runner/FileHashing.h"

#include <gtest/gtest.h>

#include "kit/TemporaryDirectory.h"

namespace {

using scenario_runner::HashFile;
using scenario_runner::SourceFiles;
using scenario_runner::Stopped;

bool GoOn() {
    return false;
}

bool Stop() {
    return true;
}

class FileHashingTest : public testing::Test {
protected:
    FileHashingTest() { WriteTextFile(path, "content"); }

    const TemporaryDirectory directory;
    const std::wstring path = directory / L"a";
};

TEST_F(FileHashingTest, ARequestToStopEndsTheHashing) {
    provenance::FileRecord record;
    EXPECT_EQ(HashFile(path, GoOn, record), L"");
    EXPECT_EQ(record.size, 7);
    EXPECT_THROW((void)HashFile(path, Stop, record), Stopped);
    EXPECT_THROW((void)SourceFiles(Stop).Add(path), Stopped);
}

TEST_F(FileHashingTest, AFileThatCannotBeReadIsNamed) {
    provenance::FileRecord record;
    EXPECT_NE(HashFile(directory / L"missing", GoOn, record).find(L"missing cannot be read"), std::wstring::npos);
    EXPECT_EQ(record.sha256, L"");
}

TEST_F(FileHashingTest, ASourceThatChangesIsNoticed) {
    SourceFiles sources(GoOn);
    EXPECT_EQ(sources.Add(path).size, 7);
    sources.CheckUnchanged();
    EXPECT_EQ(sources.Problem(), L"");
    WriteTextFile(path, "CONTENT");
    sources.CheckUnchanged();
    EXPECT_NE(sources.Problem().find(L"was changed during the run"), std::wstring::npos);
}

} // namespace
