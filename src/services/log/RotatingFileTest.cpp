#include "services/log/RotatingFile.h"

#include <string>

#include <gtest/gtest.h>

#include "kit/TemporaryDirectory.h"
#include "platform/files/File.h"
#include "platform/files/FileLock.h"
#include "platform/files/FileSystem.h"
#include "platform/files/RemoveTree.h"

using log_file::RotatingFile;
using log_file::RotationLimits;

namespace {

/// Space for two records of eight bytes.
constexpr RotationLimits twoRecords = {.bytes = 20, .files = 3};

class RotatingFileTest : public testing::Test {
protected:
    RotatingFileTest() { file.SetPath(path); }

    std::string Content(const std::wstring& suffix = L"") const { return ReadTextFile(path + suffix); }
    bool Exists(const std::wstring& suffix) const { return platform::Exists(path + suffix); }

    const TemporaryDirectory directory;
    const std::wstring path = directory / L"logs\\controller.log";
    RotatingFile file{twoRecords};
};

} // namespace

TEST_F(RotatingFileTest, MakesMissingDirectories) {
    file.Append("record1\n", 1);
    EXPECT_EQ(Content(), "record1\n");
}

TEST_F(RotatingFileTest, AppendsToAnExistingFile) {
    WriteTextFile(path, "before\n");
    file.Append("record1\n", 1);
    EXPECT_EQ(Content(), "before\nrecord1\n");
}

TEST_F(RotatingFileTest, DropsRecordsWithoutAPath) {
    RotatingFile nowhere{twoRecords};
    nowhere.Append("record1\n", 1);
    nowhere.SetPath(path);
    nowhere.Append("record2\n", 1);
    nowhere.SetPath(L"");
    nowhere.Append("record3\n", 1);
    EXPECT_EQ(Content(), "record2\n");
}

TEST_F(RotatingFileTest, BeginsANewFileBeforeOneGrowsTooLarge) {
    for (const char* record : {"record1\n", "record2\n", "record3\n"}) {
        file.Append(record, 1);
    }
    EXPECT_EQ(Content(L".1"), "record1\nrecord2\n");
    EXPECT_EQ(Content(), "record3\n");
}

TEST_F(RotatingFileTest, KeepsOnlyTheNewestFiles) {
    for (int number = 1; number <= 9; ++number) {
        file.Append("record" + std::to_string(number) + "\n", 1);
    }
    EXPECT_EQ(Content(), "record9\n");
    EXPECT_EQ(Content(L".1"), "record7\nrecord8\n");
    EXPECT_EQ(Content(L".2"), "record5\nrecord6\n");
    EXPECT_FALSE(Exists(L".3"));
}

TEST_F(RotatingFileTest, LeavesTheFilesToAProcessThatIsRotatingThem) {
    file.Append("record1\n", 1);
    file.Append("record2\n", 1);
    platform::FileLock other;
    ASSERT_TRUE(other.Take(path + L".lock"));
    file.Append("record3\n", 1);
    EXPECT_EQ(Content(), "record1\nrecord2\nrecord3\n");
    other.Release();
    file.Append("record4\n", 1);
    EXPECT_EQ(Content(L".1"), "record1\nrecord2\nrecord3\n");
    EXPECT_EQ(Content(), "record4\n");
}

TEST_F(RotatingFileTest, WritesARecordThatIsLargerThanTheLimitIntoAFileOfItsOwn) {
    file.Append("record1\n", 1);
    file.Append("a record that is larger than the limit\n", 1);
    file.Append("record2\n", 1);
    EXPECT_EQ(Content(L".2"), "record1\n");
    EXPECT_EQ(Content(L".1"), "a record that is larger than the limit\n");
    EXPECT_EQ(Content(), "record2\n");
}

TEST_F(RotatingFileTest, LosesNothingWhileAReaderHoldsTheFileOpen) {
    file.Append("record1\n", 1);
    platform::File reader;
    ASSERT_TRUE(reader.OpenForReading(path));
    for (const char* record : {"record2\n", "record3\n", "record4\n"}) {
        file.Append(record, 1);
    }
    const std::string old = Exists(L".1") ? Content(L".1") : "";
    EXPECT_EQ(old + Content(), "record1\nrecord2\nrecord3\nrecord4\n");
}

TEST_F(RotatingFileTest, GoesOnAppendingWhileTheFileCannotBeRenamed) {
    // Occupies the path of the old file with a non-empty directory.
    WriteTextFile(path + L".1\\held", "");
    WriteTextFile(path + L".2\\held", "");
    for (const char* record : {"record1\n", "record2\n", "record3\n", "record4\n"}) {
        file.Append(record, 1);
    }
    EXPECT_EQ(Content(), "record1\nrecord2\nrecord3\nrecord4\n");

    ASSERT_TRUE(platform::RemoveTree(path + L".1"));
    ASSERT_TRUE(platform::RemoveTree(path + L".2"));
    file.Append("record5\n", 1);
    EXPECT_EQ(Content(L".1"), "record1\nrecord2\nrecord3\nrecord4\n");
    EXPECT_EQ(Content(), "record5\n");
}

TEST_F(RotatingFileTest, BeginsANewFileWithinASecondWhenTheOldOneWasRenamed) {
    file.Append("record1\n", 1);
    ASSERT_TRUE(platform::RenameFile(path, directory / L"moved.log"));
    file.Append("record2\n", 2);
    EXPECT_EQ(Content(), "record2\n");
}

TEST_F(RotatingFileTest, SharesItsFileWithAnotherWriter) {
    RotatingFile other{twoRecords};
    other.SetPath(path);
    file.Append("record1\n", 1);
    other.Append("record2\n", 1);
    other.Append("record3\n", 1);
    file.Append("record4\n", 2);
    file.Append("record5\n", 2);
    EXPECT_EQ(Content(L".2"), "record1\nrecord2\n");
    EXPECT_EQ(Content(L".1"), "record3\nrecord4\n");
    EXPECT_EQ(Content(), "record5\n");
}

TEST_F(RotatingFileTest, SaysOnceThatItCannotWrite) {
    WriteTextFile(directory / L"taken", "");
    file.SetPath(directory / L"taken\\controller.log");
    testing::internal::CaptureStderr();
    file.Append("record1\n", 1);
    file.Append("record2\n", 2);
    const std::string said = testing::internal::GetCapturedStderr();
    EXPECT_NE(said.find("controller.log cannot be written: "), std::string::npos) << said;
    EXPECT_NE(said.find(". Messages are lost until it can be.\n"), std::string::npos) << said;
    EXPECT_EQ(said.find('\n'), said.size() - 1) << said;
}

TEST_F(RotatingFileTest, TriesAgainEachSecondAfterAFailure) {
    WriteTextFile(directory / L"taken", "");
    file.SetPath(directory / L"taken\\controller.log");
    testing::internal::CaptureStderr();
    file.Append("record1\n", 1);
    ASSERT_TRUE(platform::RemoveFile(directory / L"taken"));
    file.Append("record2\n", 2);
    testing::internal::GetCapturedStderr();
    EXPECT_EQ(ReadTextFile(directory / L"taken\\controller.log"),
              "(Messages that could not be written here: 1)\nrecord2\n");
}
