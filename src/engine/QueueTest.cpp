#include "engine/Queue.h"

#include <gtest/gtest.h>

#include <array>
#include <vector>

namespace {

constexpr std::array statuses{JobStatus::Queued,   JobStatus::Running,       JobStatus::Success,
                              JobStatus::Failed,   JobStatus::Dequeued,      JobStatus::Canceling,
                              JobStatus::Canceled, static_cast<JobStatus>(9)};

/// Applies the rule to all statuses in their order, then to the unnamed one.
template <typename Rule>
auto ForAll(const Rule& rule) {
    std::vector<decltype(rule(JobStatus::Queued))> outcomes;
    for (const JobStatus status : statuses) {
        outcomes.push_back(rule(status));
    }
    return outcomes;
}

using Names = std::set<std::wstring>;
using Statuses = std::vector<JobStatus>;
using Outcomes = std::vector<std::optional<JobStatus>>;

TEST(QueueTest, AJobIsNamedByItsIdOrByItsNumber) {
    Names requested{L"3f9a", L"12", L"013"};
    EXPECT_EQ(queue::TakeRequested(L"3f9a", 1, requested), L"3f9a");
    EXPECT_EQ(queue::TakeRequested(L"77", 12, requested), L"12");
    EXPECT_EQ(queue::TakeRequested(L"78", 13, requested), std::nullopt);
    EXPECT_EQ(requested, Names{L"013"});
}

TEST(QueueTest, ANameStandsForTheFirstJobThatItIsTriedOn) {
    Names requested{L"12"};
    EXPECT_EQ(queue::TakeRequested(L"12", 5, requested), L"12");
    EXPECT_EQ(queue::TakeRequested(L"a", 12, requested), std::nullopt);
}

TEST(QueueTest, TheIdComesBeforeTheNumber) {
    Names requested{L"4", L"5"};
    EXPECT_EQ(queue::TakeRequested(L"5", 4, requested), L"5");
    EXPECT_EQ(requested, Names{L"4"});
}

TEST(QueueTest, NumbersRiseAndTheLargestIsFollowedByTheSmallest) {
    EXPECT_EQ(queue::NumberAfter(1), 2);
    EXPECT_EQ(queue::NumberAfter(INT32_MAX), INT32_MIN);
}

TEST(QueueTest, TheNextNumberIsBehindAllThatAreListed) {
    EXPECT_EQ(queue::NextNumber(1, 7), 8);
    EXPECT_EQ(queue::NextNumber(8, 3), 8);
    EXPECT_EQ(queue::NextNumber(8, 8), 9);
    EXPECT_EQ(queue::NextNumber(1, -5), 1);
}

TEST(QueueTest, OnlyAQueuedJobIsStarted) {
    EXPECT_EQ(ForAll(queue::CanStart), (std::vector{true, false, false, false, false, false, false, false}));
}

TEST(QueueTest, ACancellationTakesOutOfTheQueueOrAsksToStop) {
    const std::optional<JobStatus> nothing;
    EXPECT_EQ(ForAll(queue::AfterCancel), (Outcomes{JobStatus::Dequeued, JobStatus::Canceling, nothing, nothing,
                                                    nothing, nothing, nothing, nothing}));
}

TEST(QueueTest, ACancelledJobIsCanceledWhateverItsResult) {
    EXPECT_EQ(queue::AfterEnd(JobStatus::Canceling, true), JobStatus::Canceled);
    EXPECT_EQ(queue::AfterEnd(JobStatus::Canceling, false), JobStatus::Canceled);
    EXPECT_EQ(queue::AfterEnd(JobStatus::Running, true), JobStatus::Success);
    EXPECT_EQ(queue::AfterEnd(JobStatus::Running, false), JobStatus::Failed);
}

TEST(QueueTest, ARestartCancelsWhatHasNotEnded) {
    const auto afterRestart = [](JobStatus status) { return queue::AfterRestart(status, {}); };
    EXPECT_EQ(ForAll(afterRestart),
              (Statuses{JobStatus::Canceled, JobStatus::Canceled, JobStatus::Success, JobStatus::Failed,
                        JobStatus::Canceled, JobStatus::Canceled, JobStatus::Canceled, JobStatus::Canceled}));
    EXPECT_EQ(queue::AfterRestart(JobStatus::Dequeued, {.keepsDequeued = true}), JobStatus::Dequeued);
    EXPECT_EQ(queue::AfterRestart(JobStatus::Queued, {.keepsDequeued = true}), JobStatus::Canceled);
    EXPECT_EQ(queue::AfterRestart(JobStatus::Queued, {.keepsQueued = true}), JobStatus::Queued);
    EXPECT_EQ(queue::AfterRestart(JobStatus::Running, {.keepsQueued = true}), JobStatus::Canceled);
    EXPECT_EQ(queue::AfterRestart(JobStatus::Running, {.requeuesRunning = true}), JobStatus::Queued);
    EXPECT_EQ(queue::AfterRestart(JobStatus::Canceling, {.requeuesRunning = true}), JobStatus::Canceled);
}

TEST(QueueTest, AnActiveJobIsNotDeleted) {
    EXPECT_EQ(ForAll(queue::CanDelete), (std::vector{true, false, true, true, true, false, true, true}));
}

} // namespace
