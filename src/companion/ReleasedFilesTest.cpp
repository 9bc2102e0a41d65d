#include <algorithm>
#include <filesystem>

#include <gtest/gtest.h>

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "formats/JobListFile.h"
#include "formats/QueueStateFile.h"
#include "kit/LogCapture.h"
#include "kit/TemporaryDirectory.h"
#include "services/Settings.h"
#include "services/SettingsFile.h"
#include "text/Text.h"

/// The files in tests/released, which earlier versions wrote.
namespace {

class ReleasedFilesTest : public testing::TestWithParam<std::string> {
protected:
    /// A file of the version, copied to a directory where it may be changed.
    std::wstring Copy(const std::string& name) const {
        const std::string file = std::string(RELEASED_FILES_DIRECTORY "/") + GetParam() + "/" + name;
        const std::wstring copy = directory / text::FromUtf8(name);
        WriteTextFile(copy, ReadTextFile(text::FromUtf8(file)));
        return copy;
    }

    const TemporaryDirectory directory;
    LogCapture log;
};

std::string Summary(const ListedJob& job) {
    return std::to_string(job.seqId) + " " + JobStatusString(job.status) + " " +
           text::ToUtf8(job.scenario.displayName) + " inputs=" + std::to_string(job.inputFiles.size()) +
           " priority=" + std::to_string(job.priority) + (job.hold ? " hold" : "") + "\n";
}

TEST_P(ReleasedFilesTest, SettingsAreReadWithoutWarnings) {
    settings::Settings read;
    std::wstring problem;
    std::vector<std::wstring> warnings;
    EXPECT_TRUE(settings::ReadSettingsFile(Copy("settings.json"), read, problem, warnings)) << text::ToUtf8(problem);
    EXPECT_TRUE(warnings.empty()) << text::ToUtf8(warnings.front());
    EXPECT_EQ(read.transmitterName, L"released");
    EXPECT_EQ(read.parallelJobs, 2);
}

TEST_P(ReleasedFilesTest, TheJobListIsReadWithItsJournal) {
    const std::wstring list = Copy("job_list.json");
    Copy("job_list.json.journal");
    std::vector<ListedJob> jobs;
    ASSERT_TRUE(job_list_file::ReadRows(list, jobs)) << log.Text();
    std::string summary;
    for (const ListedJob& job : jobs) {
        summary += Summary(job);
    }
    EXPECT_EQ(summary, ReadTextFile(Copy("expected_jobs.txt")));
    EXPECT_EQ(log.Text(), "");
}

TEST_P(ReleasedFilesTest, TheStateOfTheQueueIsRead) {
    Copy("job_list.json.queue");
    EXPECT_TRUE(queue_state_file::Read(directory / L"job_list.json").isPaused);
    EXPECT_EQ(log.Text(), "");
}

TEST_P(ReleasedFilesTest, TheJobsFileIsRead) {
    std::vector<EnqueueJobsInfo> requests;
    ASSERT_TRUE(ControllerCSWrapper::ReadEnqueueJobsFile(Copy("jobs.json"), requests));
    ASSERT_EQ(requests.size(), 2u);
    EXPECT_EQ(requests[0].inputFileSets.size(), 2u);
    EXPECT_EQ(requests[0].runArgument, L"size=3");
}

std::vector<std::string> Versions() {
    std::vector<std::string> versions;
    for (const auto& entry : std::filesystem::directory_iterator(RELEASED_FILES_DIRECTORY)) {
        if (entry.is_directory()) {
            versions.push_back(entry.path().filename().string());
        }
    }
    return versions;
}

INSTANTIATE_TEST_SUITE_P(Versions, ReleasedFilesTest, testing::ValuesIn(Versions()), [](const auto& version) {
    std::string name = "Version" + version.param;
    std::replace(name.begin(), name.end(), '.', '_');
    return name;
});

} // namespace
