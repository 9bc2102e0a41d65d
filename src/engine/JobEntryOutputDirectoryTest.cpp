#include "CommonControllerLib/JobEntry.h"

#include "kit/TemporaryDirectory.h"
#include "kit/doubles/RecordingCompanion.h"
#include "platform/files/FileSystem.h"
#include "platform/files/RemoveTree.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <mutex>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace {

using Lines = std::vector<std::wstring>;

class JobEntryOutputDirectoryTest : public testing::Test {
protected:
    JobEntry JobWith(const std::wstring& outputDir, const std::vector<std::wstring>& inputFiles) {
        JobListInfo record{};
        record.seqId = 7;
        record.outputDir = outputDir;
        record.inputFiles = inputFiles;
        return JobEntry(record);
    }

    /// The directory created for a job, relative to the temporary directory; empty if that failed.
    std::wstring Prepare(const std::wstring& inputFile) {
        JobEntry job = JobWith(directory.Path(), {inputFile});
        EXPECT_TRUE(job.PrepareOutputDir());
        EXPECT_TRUE(platform::IsDirectory(job.GetOutputFolder()));
        return job.GetOutputFolder().substr(directory.Path().size());
    }

    RecordingCompanion companion;
    TemporaryDirectory directory;
};

TEST_F(JobEntryOutputDirectoryTest, DirectoryIsNamedAfterTheFirstInputWithoutVersionAndExtension) {
    EXPECT_EQ(Prepare(L"C:\\m\\part.prt.3"), L"\\part");
    EXPECT_EQ(Prepare(L"C:\\m\\part.prt.3"), L"\\part_1");
    EXPECT_EQ(Prepare(L"C:\\m\\part.prt.3"), L"\\part_2");
}

TEST_F(JobEntryOutputDirectoryTest, InputWithoutVersionLosesItsExtension) {
    EXPECT_EQ(Prepare(L"C:\\m\\part.prt"), L"\\part");
}

TEST_F(JobEntryOutputDirectoryTest, DotInTheDirectoryAndNumericExtensionDropOnlyWhatTheNameHas) {
    EXPECT_EQ(Prepare(L"C:\\m.v\\part.3"), L"\\part");
}

TEST_F(JobEntryOutputDirectoryTest, TrailingBlanksAreCutOff) {
    EXPECT_EQ(Prepare(L"C:\\m\\part  .prt"), L"\\part");
    EXPECT_EQ(Prepare(L"C:\\m\\part  .prt"), L"\\part_1");
}

TEST_F(JobEntryOutputDirectoryTest, InputWhoseNameIsEmptyWithoutItsExtensionGetsANumberBehindTheOutputDirectory) {
    for (const std::wstring input : {L"C:\\m\\.hidden", L"C:\\m\\", L""}) {
        const TemporaryDirectory other;
        JobEntry first = JobWith(other / L"out", {input});
        EXPECT_TRUE(first.PrepareOutputDir());
        EXPECT_EQ(first.GetOutputFolder(), other / L"out");
        JobEntry second = JobWith(other / L"out", {input});
        EXPECT_TRUE(second.PrepareOutputDir());
        EXPECT_EQ(second.GetOutputFolder(), other / L"out_1");
        EXPECT_TRUE(platform::IsDirectory(other / L"out_1"));
    }
}

TEST_F(JobEntryOutputDirectoryTest, InputWhoseNameIsBlankLeavesTheSeparatorBehindTheOutputDirectory) {
    JobEntry first = JobWith(directory / L"out", {L"C:\\m\\  .prt"});
    EXPECT_TRUE(first.PrepareOutputDir());
    EXPECT_EQ(first.GetOutputFolder(), directory / L"out\\");
    JobEntry second = JobWith(directory / L"out", {L"C:\\m\\  .prt"});
    EXPECT_TRUE(second.PrepareOutputDir());
    EXPECT_EQ(second.GetOutputFolder(), directory / L"out\\_1");
    EXPECT_TRUE(platform::IsDirectory(directory / L"out\\_1"));
}

TEST_F(JobEntryOutputDirectoryTest, BlanksAtTheEndOfTheOutputDirectoryAreCutOffWhereNoNameFollows) {
    JobEntry job = JobWith(directory / L"out  ", {L"C:\\m\\.hidden"});
    EXPECT_TRUE(job.PrepareOutputDir());
    EXPECT_EQ(job.GetOutputFolder(), directory / L"out");
}

TEST_F(JobEntryOutputDirectoryTest, JobsThatArePreparedAtTheSameTimeGetDirectoriesOfTheirOwn) {
    constexpr std::size_t rounds = 100;
    std::mutex mutex;
    std::set<std::wstring> directories;
    const auto prepare = [&] {
        for (std::size_t round = 0; round < rounds; ++round) {
            JobEntry job = JobWith(directory / std::to_wstring(round), {L"part.prt"});
            EXPECT_TRUE(job.PrepareOutputDir());
            const std::lock_guard lock(mutex);
            directories.insert(job.GetOutputFolder());
        }
    };
    std::vector<std::thread> engines;
    for (int engine = 0; engine < 4; ++engine) {
        engines.emplace_back(prepare);
    }
    for (std::thread& engine : engines) {
        engine.join();
    }
    EXPECT_EQ(directories.size(), 4 * rounds);
}

TEST_F(JobEntryOutputDirectoryTest, MissingParentDirectoriesAreMade) {
    JobEntry job = JobWith(directory / L"a\\b", {L"part.prt"});
    EXPECT_TRUE(job.PrepareOutputDir());
    EXPECT_TRUE(platform::IsDirectory(directory / L"a\\b\\part"));
}

TEST_F(JobEntryOutputDirectoryTest, FileWithTheDirectoriesNameIsPassedOverToo) {
    WriteTextFile(directory / L"part", "");
    EXPECT_EQ(Prepare(L"part.prt"), L"\\part_1");
}

TEST_F(JobEntryOutputDirectoryTest, JobWithoutInputsTakesItsOutputDirectoryExistingOrNot) {
    for (const std::wstring& outputDir : {directory.Path(), directory / L"missing"}) {
        JobEntry job = JobWith(outputDir, {});
        EXPECT_TRUE(job.PrepareOutputDir());
        EXPECT_EQ(job.GetOutputFolder(), outputDir);
    }
    EXPECT_FALSE(platform::Exists(directory / L"missing"));
}

TEST_F(JobEntryOutputDirectoryTest, DirectoryThatCannotBeMadeIsAnErrorAndLeavesNone) {
    const std::wstring file = directory / L"file";
    WriteTextFile(file, "");
    JobEntry job = JobWith(file, {L"part.prt"});
    EXPECT_FALSE(job.PrepareOutputDir());
    EXPECT_EQ(job.GetOutputFolder(), L"");
    EXPECT_EQ(companion.Events(), Lines{L"error: Failed to create directory: " + file + L"\\part for Job: 7"});
}

TEST_F(JobEntryOutputDirectoryTest, RelativeOutputDirectoryIsRefused) {
    JobEntry job = JobWith(L"relative", {L"part.prt"});
    EXPECT_FALSE(job.PrepareOutputDir());
    EXPECT_EQ(companion.Events(), Lines{L"error: Failed to create directory: relative\\part for Job: 7"});
}

TEST_F(JobEntryOutputDirectoryTest, PreparedDirectoryReplacesTheRecordsOutputDirectory) {
    JobEntry job = JobWith(directory.Path(), {L"part.prt"});
    ASSERT_TRUE(job.PrepareOutputDir());
    EXPECT_EQ(job.GetJobListInfo().outputDir, directory.Path());
    job.SetOutputFolder();
    EXPECT_EQ(job.GetJobListInfo().outputDir, directory / L"part");
}

TEST_F(JobEntryOutputDirectoryTest, PreparedDirectoryThatIsGoneLeavesTheRecordsOutputDirectory) {
    JobEntry job = JobWith(directory.Path(), {L"part.prt"});
    ASSERT_TRUE(job.PrepareOutputDir());
    ASSERT_TRUE(platform::RemoveTree(directory / L"part"));
    job.SetOutputFolder();
    EXPECT_EQ(job.GetJobListInfo().outputDir, directory.Path());
}

TEST_F(JobEntryOutputDirectoryTest, WithoutAPreparedDirectoryTheRecordsOutputDirectoryStays) {
    JobEntry job = JobWith(directory.Path(), {L"part.prt"});
    job.SetOutputFolder();
    EXPECT_EQ(job.GetJobListInfo().outputDir, directory.Path());
}

TEST_F(JobEntryOutputDirectoryTest, RunRequestNamesThePreparedDirectory) {
    JobEntry job = JobWith(directory.Path(), {L"part.prt"});
    ASSERT_TRUE(job.PrepareOutputDir());
    std::wstring json;
    ASSERT_TRUE(job.CreateJsonString(json));
    ASSERT_EQ(companion.RunRequests().size(), 1U);
    EXPECT_EQ(companion.RunRequests()[0].outputFolder, directory / L"part");
}

} // namespace
