#include "CommonControllerLib/JobEntry.h"

#include "doubles/RecordingCompanion.h"
#include "platform/files/FileSystem.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <mutex>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace {

using Lines = std::vector<std::wstring>;

class JobEntryOutputFolderTest : public testing::Test {
protected:
    JobEntry JobWith(const std::wstring& outputDir, const std::vector<std::wstring>& inputFiles) {
        JobListInfo record{};
        record.seqId = 7;
        record.outputDir = outputDir;
        record.inputFiles = inputFiles;
        return JobEntry(record);
    }

    /// The folder made for a job, below the temporary folder; nothing when it failed.
    std::wstring Prepare(const std::wstring& inputFile) {
        JobEntry job = JobWith(folder.Path(), {inputFile});
        EXPECT_TRUE(job.PrepareOutputDir());
        EXPECT_TRUE(platform::IsFolder(job.GetOutputFolder()));
        return job.GetOutputFolder().substr(folder.Path().size());
    }

    RecordingCompanion companion;
    TemporaryFolder folder;
};

TEST_F(JobEntryOutputFolderTest, FolderIsNamedAfterTheFirstInputWithoutVersionAndExtension) {
    EXPECT_EQ(Prepare(L"C:\\m\\part.prt.3"), L"\\part");
    EXPECT_EQ(Prepare(L"C:\\m\\part.prt.3"), L"\\part_1");
    EXPECT_EQ(Prepare(L"C:\\m\\part.prt.3"), L"\\part_2");
}

TEST_F(JobEntryOutputFolderTest, InputWithoutVersionLosesItsExtension) {
    EXPECT_EQ(Prepare(L"C:\\m\\part.prt"), L"\\part");
}

TEST_F(JobEntryOutputFolderTest, DotInTheFolderAndNumericExtensionDropOnlyWhatTheNameHas) {
    EXPECT_EQ(Prepare(L"C:\\m.v\\part.3"), L"\\part");
}

TEST_F(JobEntryOutputFolderTest, TrailingBlanksAreCutOff) {
    EXPECT_EQ(Prepare(L"C:\\m\\part  .prt"), L"\\part");
    EXPECT_EQ(Prepare(L"C:\\m\\part  .prt"), L"\\part_1");
}

TEST_F(JobEntryOutputFolderTest, InputWhoseNameIsEmptyWithoutItsExtensionGetsANumberBehindTheOutputDirectory) {
    for (const std::wstring input : {L"C:\\m\\.hidden", L"C:\\m\\", L""}) {
        const TemporaryFolder other;
        JobEntry first = JobWith(other / L"out", {input});
        EXPECT_TRUE(first.PrepareOutputDir());
        EXPECT_EQ(first.GetOutputFolder(), other / L"out");
        JobEntry second = JobWith(other / L"out", {input});
        EXPECT_TRUE(second.PrepareOutputDir());
        EXPECT_EQ(second.GetOutputFolder(), other / L"out_1");
        EXPECT_TRUE(platform::IsFolder(other / L"out_1"));
    }
}

TEST_F(JobEntryOutputFolderTest, InputWhoseNameIsBlankLeavesTheSeparatorBehindTheOutputDirectory) {
    JobEntry first = JobWith(folder / L"out", {L"C:\\m\\  .prt"});
    EXPECT_TRUE(first.PrepareOutputDir());
    EXPECT_EQ(first.GetOutputFolder(), folder / L"out\\");
    JobEntry second = JobWith(folder / L"out", {L"C:\\m\\  .prt"});
    EXPECT_TRUE(second.PrepareOutputDir());
    EXPECT_EQ(second.GetOutputFolder(), folder / L"out\\_1");
    EXPECT_TRUE(platform::IsFolder(folder / L"out\\_1"));
}

TEST_F(JobEntryOutputFolderTest, BlanksAtTheEndOfTheOutputDirectoryAreCutOffWhereNoNameFollows) {
    JobEntry job = JobWith(folder / L"out  ", {L"C:\\m\\.hidden"});
    EXPECT_TRUE(job.PrepareOutputDir());
    EXPECT_EQ(job.GetOutputFolder(), folder / L"out");
}

TEST_F(JobEntryOutputFolderTest, JobsThatArePreparedAtTheSameTimeGetFoldersOfTheirOwn) {
    constexpr std::size_t rounds = 100;
    std::mutex mutex;
    std::set<std::wstring> folders;
    const auto prepare = [&] {
        for (std::size_t round = 0; round < rounds; ++round) {
            JobEntry job = JobWith(folder / std::to_wstring(round), {L"part.prt"});
            EXPECT_TRUE(job.PrepareOutputDir());
            const std::lock_guard lock(mutex);
            folders.insert(job.GetOutputFolder());
        }
    };
    std::vector<std::thread> engines;
    for (int engine = 0; engine < 4; ++engine) {
        engines.emplace_back(prepare);
    }
    for (std::thread& engine : engines) {
        engine.join();
    }
    EXPECT_EQ(folders.size(), 4 * rounds);
}

TEST_F(JobEntryOutputFolderTest, MissingParentFoldersAreMade) {
    JobEntry job = JobWith(folder / L"a\\b", {L"part.prt"});
    EXPECT_TRUE(job.PrepareOutputDir());
    EXPECT_TRUE(platform::IsFolder(folder / L"a\\b\\part"));
}

TEST_F(JobEntryOutputFolderTest, FileWithTheFoldersNameIsPassedOverToo) {
    WriteTextFile(folder / L"part", "");
    EXPECT_EQ(Prepare(L"part.prt"), L"\\part_1");
}

TEST_F(JobEntryOutputFolderTest, JobWithoutInputsTakesItsOutputDirectoryExistingOrNot) {
    for (const std::wstring& outputDir : {folder.Path(), folder / L"missing"}) {
        JobEntry job = JobWith(outputDir, {});
        EXPECT_TRUE(job.PrepareOutputDir());
        EXPECT_EQ(job.GetOutputFolder(), outputDir);
    }
    EXPECT_FALSE(platform::Exists(folder / L"missing"));
}

TEST_F(JobEntryOutputFolderTest, FolderThatCannotBeMadeIsAnErrorAndLeavesNone) {
    const std::wstring file = folder / L"file";
    WriteTextFile(file, "");
    JobEntry job = JobWith(file, {L"part.prt"});
    EXPECT_FALSE(job.PrepareOutputDir());
    EXPECT_EQ(job.GetOutputFolder(), L"");
    EXPECT_EQ(companion.Events(), Lines{L"error: Failed to create directory: " + file + L"\\part for Job: 7"});
}

TEST_F(JobEntryOutputFolderTest, RelativeOutputDirectoryIsRefused) {
    JobEntry job = JobWith(L"relative", {L"part.prt"});
    EXPECT_FALSE(job.PrepareOutputDir());
    EXPECT_EQ(companion.Events(), Lines{L"error: Failed to create directory: relative\\part for Job: 7"});
}

TEST_F(JobEntryOutputFolderTest, PreparedFolderReplacesTheRecordsOutputDirectory) {
    JobEntry job = JobWith(folder.Path(), {L"part.prt"});
    ASSERT_TRUE(job.PrepareOutputDir());
    EXPECT_EQ(job.GetJobListInfo().outputDir, folder.Path());
    job.SetOutputFolder();
    EXPECT_EQ(job.GetJobListInfo().outputDir, folder / L"part");
}

TEST_F(JobEntryOutputFolderTest, PreparedFolderThatIsGoneLeavesTheRecordsOutputDirectory) {
    JobEntry job = JobWith(folder.Path(), {L"part.prt"});
    ASSERT_TRUE(job.PrepareOutputDir());
    ASSERT_FALSE(platform::RemoveTree(folder / L"part"));
    job.SetOutputFolder();
    EXPECT_EQ(job.GetJobListInfo().outputDir, folder.Path());
}

TEST_F(JobEntryOutputFolderTest, WithoutAPreparedFolderTheRecordsOutputDirectoryStays) {
    JobEntry job = JobWith(folder.Path(), {L"part.prt"});
    job.SetOutputFolder();
    EXPECT_EQ(job.GetJobListInfo().outputDir, folder.Path());
}

TEST_F(JobEntryOutputFolderTest, RunRequestNamesThePreparedFolder) {
    JobEntry job = JobWith(folder.Path(), {L"part.prt"});
    ASSERT_TRUE(job.PrepareOutputDir());
    std::wstring json;
    ASSERT_TRUE(job.CreateJsonString(json));
    ASSERT_EQ(companion.RunRequests().size(), 1U);
    EXPECT_EQ(companion.RunRequests()[0].outputFolder, folder / L"part");
}

} // namespace
