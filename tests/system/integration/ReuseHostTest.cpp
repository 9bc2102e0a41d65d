#include "kit/processes/HostProcessFixture.h"

#include "platform/files/FileSystem.h"

namespace {

using ReuseHostTest = HostProcessFixture;

} // namespace

TEST_F(ReuseHostTest, TheSecondOfTwoEqualJobsGetsTheResultsOfTheFirst) {
    std::string settings = UsualSettings("job_list.json");
    settings.insert(1, R"("reuse":true,)");
    WriteSettings(settings);
    StartHost();
    TestClient frontEnd(endpointName);
    const auto jobs = frontEnd.Enqueue(JobsFile("print it runs\nwrite output a.txt=text", 2));
    ASSERT_EQ(jobs.size(), 2U);
    const JobStatusInfo first = frontEnd.AwaitStatus(jobs[0].id, JobStatus::Success);
    const JobStatusInfo second = frontEnd.AwaitStatus(jobs[1].id, JobStatus::Success);
    EXPECT_NE(first.outputDir, second.outputDir);
    EXPECT_EQ(ReadTextFile(second.outputDir + L"\\a.txt"), "text");
    EXPECT_TRUE(platform::Exists(WorkDirOf(jobs[0].id) + L"\\scenario.log"));
    EXPECT_FALSE(platform::Exists(WorkDirOf(jobs[1].id) + L"\\scenario.log"));
    EXPECT_NE(ReadTextFile(WorkDirOf(jobs[1].id) + L"\\run_scenario_result.json").find("Results of job 1."),
              std::string::npos);
}
