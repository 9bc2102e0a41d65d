#include "controller_host/OrphanCleanup.h"

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "kit/TemporaryDirectory.h"
#include "platform/files/Directory.h"
#include "platform/files/FileSystem.h"
#include "platform/files/RemoveTree.h"

#include <gtest/gtest.h>

namespace {

class OrphanCleanupTest : public testing::Test {
protected:
    void SaveJob(JobStatus status) {
        JobListInfo job{};
        job.id = L"1";
        job.status = status;
        job.workDir = directory / L"work";
        EXPECT_TRUE(ControllerCSWrapper::CreateJsonFile(
            ControllerCSWrapper::Serialize(L"JobList", std::vector<JobListInfo>{job}), listFile));
    }
    bool WasAskedToStop() const { return platform::Exists(directory / L"work\\killprocess"); }

    TemporaryDirectory directory;
    std::wstring listFile = directory / L"job_list.json";
};

TEST_F(OrphanCleanupTest, ActiveJobsAreAskedToStop) {
    for (const JobStatus status : {JobStatus::Running, JobStatus::Canceling}) {
        ASSERT_TRUE(platform::EnsureDirectory(directory / L"work"));
        SaveJob(status);
        StopOrphanCleanup(listFile);
        EXPECT_TRUE(WasAskedToStop());
        ASSERT_TRUE(platform::RemoveTree(directory / L"work"));
    }
}

TEST_F(OrphanCleanupTest, OthersAreLeftAlone) {
    ASSERT_TRUE(platform::EnsureDirectory(directory / L"work"));
    for (const JobStatus status : {JobStatus::Queued, JobStatus::Success, JobStatus::Canceled}) {
        SaveJob(status);
        StopOrphanCleanup(listFile);
        EXPECT_FALSE(WasAskedToStop());
    }
}

TEST_F(OrphanCleanupTest, AWorkDirectoryThatIsGoneIsNotMadeAgain) {
    SaveJob(JobStatus::Running);
    StopOrphanCleanup(listFile);
    EXPECT_FALSE(platform::Exists(directory / L"work"));
}

TEST_F(OrphanCleanupTest, AMissingListIsNothingToDo) {
    StopOrphanCleanup(listFile);
    EXPECT_FALSE(platform::Exists(listFile));
}

} // namespace
