#include "controller_host/ReuseCandidates.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;

JobListInfo Job(std::int32_t number, const std::wstring& input) {
    JobListInfo job;
    job.id = std::to_wstring(number);
    job.seqId = number;
    job.scenario.path = L"/s/a.rb";
    job.runArgument = L"fine";
    job.inputFiles = {input, L"/in/b"};
    job.status = JobStatus::Success;
    return job;
}

} // namespace

TEST(ReuseCandidatesTest, TheLatestSucceededJobsOfTheSameRequestComeFirst) {
    ReuseCandidates candidates;
    for (const int number : {1, 3, 2}) {
        candidates.Update(Job(number, L"/in/a"));
    }
    candidates.Update(Job(4, L"/in/other"));
    EXPECT_THAT(candidates.Of(Job(9, L"/in/a")), ElementsAre(L"3", L"2", L"1"));
    JobListInfo other = Job(9, L"/in/a");
    other.runArgument = L"coarse";
    EXPECT_THAT(candidates.Of(other), ElementsAre());
    other = Job(9, L"/in/a");
    other.inputFiles.clear();
    EXPECT_THAT(candidates.Of(other), ElementsAre());
}

TEST(ReuseCandidatesTest, JobsThatHaveNotSucceededOrAreDeletedAreNone) {
    ReuseCandidates candidates;
    JobListInfo job = Job(1, L"/in/a");
    candidates.Update(job);
    job.status = JobStatus::Queued;
    candidates.Update(job);
    EXPECT_THAT(candidates.Of(job), ElementsAre());
    candidates.Update(Job(2, L"/in/a"));
    candidates.Remove(Job(2, L"/in/a"));
    EXPECT_THAT(candidates.Of(job), ElementsAre());
}

TEST(ReuseCandidatesTest, TheirNumberIsLimited) {
    ReuseCandidates candidates;
    for (int number = 1; number <= 100; ++number) {
        candidates.Update(Job(number, L"/in/a"));
    }
    const auto ids = candidates.Of(Job(101, L"/in/a"));
    ASSERT_EQ(ids.size(), ReuseCandidates::most);
    EXPECT_EQ(ids.front(), L"100");
}
