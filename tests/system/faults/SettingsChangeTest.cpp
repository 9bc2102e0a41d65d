#include "system/faults/FaultFixture.h"

#include "platform/files/FileSystem.h"

namespace {

class SettingsChangeTest : public FaultFixture {
protected:
    SettingsChangeTest() { StartHost(); }
};

TEST_F(SettingsChangeTest, AnotherListWaitsForTheNextStart) {
    TestClient frontEnd(endpointName);
    ExpectJobs(frontEnd, "exit 0", 1, JobStatus::Success);
    WriteTextFile(directory / L"other_list.json", R"({"JobList":[{"id":"foreign","seqId":7}]})");
    const std::wstring firstList = listFile;
    Place("other_list.json", "controller.log", "work");
    ExpectJobs(frontEnd, "exit 0", 1, JobStatus::Success);
    EXPECT_EQ(SavedJobs().size(), 1U);
    EXPECT_EQ(SavedJobs().at(0).id, L"foreign");
    listFile = firstList;
    Await("the saved list", [&] { return SavedJobs().size() == 2; });
    EXPECT_EQ(CountInLog("jobListFile: a change takes effect with the next start"), 1);
}

TEST_F(SettingsChangeTest, AnotherWorkDirectoryHoldsForTheNextJobs) {
    TestClient frontEnd(endpointName);
    const std::wstring before = frontEnd.Enqueue(JobsFile("exit 0")).at(0).id;
    frontEnd.AwaitStatus(before, JobStatus::Success);
    Place("job_list.json", "controller.log", "other_work");
    const std::wstring after = frontEnd.Enqueue(JobsFile("exit 0")).at(0).id;
    EXPECT_EQ(frontEnd.AwaitStatus(after, JobStatus::Success).workDir, directory / (L"other_work\\" + after));

    // Directories outside the work directory are never removed; their jobs are.
    EXPECT_EQ(frontEnd.Delete({before, after}).size(), 2U);
    EXPECT_TRUE(platform::Exists(WorkDirOf(before)));
    EXPECT_FALSE(platform::Exists(directory / (L"other_work\\" + after)));
    EXPECT_EQ(CountInLog("of a job is not removed: it does not lie below the work directory"), 1);
}

TEST_F(SettingsChangeTest, JobsRunOnWhileTheFileIsBroken) {
    TestClient frontEnd(endpointName);
    WriteSettings(R"({"version":1,"interpreters":{".rb":["tes)");
    ExpectJobs(frontEnd, "exit 0", 2, JobStatus::Success);
    EXPECT_EQ(CountInLog("The settings are not usable"), 1) << Log();
    EXPECT_EQ(SavedJobs().size(), 2U);
}

TEST_F(SettingsChangeTest, JobsRunOnWhenTheFileIsGone) {
    TestClient frontEnd(endpointName);
    ASSERT_TRUE(platform::RemoveFile(directory / L"settings.json"));
    ExpectJobs(frontEnd, "exit 0", 2, JobStatus::Success);
    EXPECT_EQ(SavedJobs().size(), 2U);
}

} // namespace
