#include "controller_host/JobIndex.h"

#include <gtest/gtest.h>

#include <random>

namespace {

using Ids = std::vector<std::wstring>;

class JobIndexTest : public testing::Test {
protected:
    std::shared_ptr<JobEntry> Add(const std::wstring& id, int number, JobStatus status = JobStatus::Queued) {
        JobListInfo info{};
        info.id = id;
        info.seqId = number;
        info.status = status;
        jobs.push_back(std::make_shared<JobEntry>(info));
        index.AddNew(jobs);
        return jobs.back();
    }
    void SetStatus(const std::shared_ptr<JobEntry>& job, JobStatus status) {
        job->ChangeStatus(status);
        index.Update(*job);
    }
    void Remove(const std::shared_ptr<JobEntry>& job) {
        jobs.remove(job);
        index.Remove(*job);
    }

    static Ids IdsOf(const std::vector<JobIndex::Position>& positions) {
        Ids ids;
        for (const JobIndex::Position position : positions) {
            ids.push_back((*position)->GetId());
        }
        return ids;
    }
    Ids Named(const std::set<std::wstring>& names) const { return IdsOf(index.Named(names)); }
    Ids Active() const { return IdsOf(index.Active()); }

    JobIndex::Jobs jobs;
    JobIndex index;
};

TEST_F(JobIndexTest, JobsAreFoundByIdAndByNumberInTheOrderOfTheList) {
    Add(L"b", 1);
    Add(L"a", 2);
    Add(L"c", 3);
    EXPECT_EQ(Named({L"c", L"1", L"x", L"9"}), (Ids{L"b", L"c"}));
}

TEST_F(JobIndexTest, AnIdThatIsTheNumberOfAnotherJobFindsOnlyItsJob) {
    Add(L"7", 1);
    Add(L"a", 7);
    EXPECT_EQ(IdsOf(index.WithIds({L"7", L"1"})), Ids{L"7"});
}

TEST_F(JobIndexTest, AJobThatIsNamedTwiceIsFoundOnce) {
    Add(L"a", 1);
    EXPECT_EQ(Named({L"a", L"1"}), Ids{L"a"});
}

TEST_F(JobIndexTest, OnlyTheDecimalTextOfANumberFindsTheJob) {
    Add(L"a", 7);
    EXPECT_EQ(Named({L"07", L"+7", L" 7", L"7x"}), Ids());
}

TEST_F(JobIndexTest, JobsWithTheSameIdOrNumberAreAllFound) {
    Add(L"a", 1);
    const auto second = Add(L"a", 1);
    Add(L"1", 5);
    EXPECT_EQ(Named({L"1"}), (Ids{L"a", L"a", L"1"}));
    Remove(second);
    EXPECT_EQ(Named({L"1"}), (Ids{L"a", L"1"}));
    EXPECT_EQ(Named({L"a"}), Ids{L"a"});
}

TEST_F(JobIndexTest, JobsAddedTogetherAreAllFound) {
    Add(L"a", 1);
    for (const wchar_t* id : {L"b", L"c"}) {
        JobListInfo info{};
        info.id = id;
        jobs.push_back(std::make_shared<JobEntry>(info));
    }
    index.AddNew(jobs);
    EXPECT_EQ(Named({L"a", L"b", L"c"}), (Ids{L"a", L"b", L"c"}));
}

/// The index agrees with a walk over the list whatever happened before.
TEST_F(JobIndexTest, TheIndexAgreesWithAWalkOverTheList) {
    std::mt19937 random(1);
    for (int step = 0; step < 3000; ++step) {
        const auto draw = [&](std::size_t below) { return random() % below; };
        if (jobs.empty() || draw(4) == 0) {
            Add(L"id" + std::to_wstring(step % 400), step, static_cast<JobStatus>(draw(7)));
            continue;
        }
        const auto job = *std::next(jobs.begin(), static_cast<std::ptrdiff_t>(draw(jobs.size())));
        if (draw(5) == 0) {
            Remove(job);
        } else {
            SetStatus(job, static_cast<JobStatus>(draw(7)));
        }
        Ids active;
        bool hasQueued = false;
        for (const auto& listed : jobs) {
            const JobStatus status = listed->GetStatus();
            hasQueued = hasQueued || status == JobStatus::Queued;
            if (status == JobStatus::Running || status == JobStatus::Canceling) {
                active.push_back(listed->GetId());
            }
        }
        ASSERT_EQ(Active(), active);
        ASSERT_EQ(index.ActiveCount(), active.size());
        ASSERT_EQ(index.HasQueued(), hasQueued);
    }
}

} // namespace
