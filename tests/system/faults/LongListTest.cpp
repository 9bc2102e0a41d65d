#include "system/faults/FaultFixture.h"

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "text/Text.h"

namespace {

#ifdef CONTROLLER_SANITIZED
constexpr int rows = 10'000;
#else
constexpr int rows = 100'000;
#endif

using LongListTest = FaultFixture;

/// Ended jobs with numbers from 1.
std::vector<JobListInfo> EndedJobs() {
    std::vector<JobListInfo> jobs;
    for (int number = 1; number <= rows; ++number) {
        JobListInfo& job = jobs.emplace_back();
        job.id = L"e" + std::to_wstring(number);
        job.seqId = number;
        job.status = JobStatus::Success;
        job.progress = 100;
        job.outputDir = L"out\\part_" + std::to_wstring(number);
        job.inputFiles = {L"part.stl"};
    }
    return jobs;
}

std::vector<std::wstring> IdsOf(const std::vector<JobListInfo>& jobs, std::size_t count) {
    std::vector<std::wstring> ids;
    for (std::size_t index = 0; index < count; ++index) {
        ids.push_back(jobs[index].id);
    }
    return ids;
}

TEST_F(LongListTest, ItIsLoadedGrowsAndShrinks) {
    const std::vector<JobListInfo> jobs = EndedJobs();
    WriteTextFile(listFile, text::ToUtf8(ControllerCSWrapper::Serialize(L"JobList", jobs)));
    StartHost();
    TestClient frontEnd(endpointName);
    EXPECT_EQ(frontEnd.Jobs(), jobs);

    const std::vector<JobIdInfo> added = frontEnd.Enqueue(JobsFile("exit 0"));
    ASSERT_EQ(added.size(), 1U);
    EXPECT_EQ(added[0].seqId, rows + 1);
    frontEnd.AwaitStatus(added[0].id, JobStatus::Success);

    constexpr std::size_t many = 1000; // each is a line in the log and a check for a directory
    const std::vector<std::wstring> deleted = IdsOf(jobs, many);
    EXPECT_EQ(frontEnd.Delete(deleted), deleted);
    EXPECT_EQ(SavedJobs().size(), jobs.size() - many + 1);
}

} // namespace
